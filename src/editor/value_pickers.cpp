#include "editor/value_pickers.h"

#include <windows.h>

#include "data/entry_types.h"
#include "data/journal_entry.h"
#include "res/resource.h"
#include "util/compare_text.h"

namespace {

// "hour" after 2 to 9 is the list's own wording.
constexpr const wchar_t* kDurations[] = {
    L"0 minutes", L"5 minutes", L"10 minutes", L"15 minutes", L"30 minutes", L"1 hour",
    L"2 hour",    L"3 hour",    L"4 hour",     L"5 hour",     L"6 hour",     L"7 hour",
    L"8 hour",    L"9 hour",    L"0.5 days",   L"1 day",      L"2 days",
};

bool BeginsWith(const std::wstring& text, const std::wstring& prefix)
{
    return prefix.size() <= text.size() &&
           IsSameForUser(std::wstring_view(text).substr(0, prefix.size()), prefix, Case::Ignored);
}

int ValueOf(std::span<const PickerChoice> choices, int valueOrId, int otherwise)
{
    for (const PickerChoice& choice : choices)
        if (valueOrId == choice.value || valueOrId == choice.menuId)
            return choice.value;
    return otherwise;
}

} // namespace

int FindTypeByPrefix(const std::wstring& text)
{
    constexpr size_t kCount = std::size(kEntryTypes);
    if (text.empty())
        return -1;
    for (size_t step = 1; step <= kCount; ++step)
        if (BeginsWith(kEntryTypes[step % kCount], text))
            return static_cast<int>(step % kCount);
    return -1;
}

int FindType(const std::wstring& text)
{
    for (size_t i = 0; i < std::size(kEntryTypes); ++i)
        if (IsSameForUser(kEntryTypes[i], text, Case::Ignored))
            return static_cast<int>(i);
    return -1;
}

std::span<const wchar_t* const> SuggestedDurations()
{
    return kDurations;
}

int PriorityOf(int valueOrId)
{
    return ValueOf(PriorityChoices(), valueOrId, kPriorityNormal);
}

int SensitivityOf(int valueOrId)
{
    return ValueOf(SensitivityChoices(), valueOrId, kSensitivityNormal);
}

ButtonFace PriorityFace(int valueOrId)
{
    const int value = PriorityOf(valueOrId);
    return {PriorityWord(value), kFirstPriorityImage + value, kPriorityWidth};
}

ButtonFace SensitivityFace(int valueOrId)
{
    const int value = SensitivityOf(valueOrId);
    return {SensitivityWord(value), kFirstSensitivityImage + value, kSensitivityWidth};
}

ButtonFace TimerFace(bool running)
{
    return {running ? L"On" : L"Off", kTimerImage, kTimerWidth};
}

std::span<const PickerChoice> PriorityChoices()
{
    static const PickerChoice s_choices[] = {
        {CMD_PRIORITY_LOW, kPriorityLow, PriorityWord(kPriorityLow)},
        {CMD_PRIORITY_NORMAL, kPriorityNormal, PriorityWord(kPriorityNormal)},
        {CMD_PRIORITY_HIGH, kPriorityHigh, PriorityWord(kPriorityHigh)},
    };
    return s_choices;
}

std::span<const PickerChoice> SensitivityChoices()
{
    static const PickerChoice s_choices[] = {
        {CMD_SENSITIVITY_NORMAL, kSensitivityNormal, SensitivityWord(kSensitivityNormal)},
        {CMD_SENSITIVITY_PERSONAL, kSensitivityPersonal, SensitivityWord(kSensitivityPersonal)},
        {CMD_SENSITIVITY_PRIVATE, kSensitivityPrivate, SensitivityWord(kSensitivityPrivate)},
        {CMD_SENSITIVITY_CONFIDENTIAL, kSensitivityConfidential, SensitivityWord(kSensitivityConfidential)},
    };
    return s_choices;
}
