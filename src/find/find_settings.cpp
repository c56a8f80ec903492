#include "find/find_settings.h"

#include <utility>

#include "data/fields.h"
#include "res/resource.h"
#include "settings/registry_store.h"

namespace {

constexpr const wchar_t* kSearchByValue = L"SearchBy";
constexpr const wchar_t* kMatchCaseValue = L"MatchCase";
constexpr const wchar_t* kSearchFromValue = L"SearchFrom";
constexpr const wchar_t* kHistoryPrefix = L"Find"; // in Options
constexpr int kHistoryLength = 5;

std::wstring HistoryName(int index)
{
    return kHistoryPrefix + std::to_wstring(index);
}

std::wstring ReadHistoryText(const RegistryStore& settings, int index)
{
    wchar_t text[kSettingTextSize];
    settings.GetString(kOptions, HistoryName(index).c_str(), L"", text);
    return text;
}

bool IsInHistory(const RegistryStore& settings, const std::wstring& text)
{
    return settings.FindListString(kOptions, kHistoryPrefix, text.c_str(), kHistoryLength, NORM_IGNORECASE) !=
           0;
}

} // namespace

int ButtonOf(SearchFrom from)
{
    return from == SearchFrom::Current ? IDC_FIND_FROM_CURRENT : IDC_FIND_FROM_TOP;
}

CEPROPID ReadSearchBy(const RegistryStore& settings)
{
    const Field* field =
        FieldOfFindButton(static_cast<int>(settings.GetNumber(kSettings, kSearchByValue, IDC_FIND_DATE)));
    return field ? field->id : kPropDate;
}

SearchFrom ReadSearchFrom(const RegistryStore& settings)
{
    const DWORD button = settings.GetNumber(kSettings, kSearchFromValue, IDC_FIND_FROM_TOP);
    return button == IDC_FIND_FROM_CURRENT ? SearchFrom::Current : SearchFrom::Top;
}

bool ReadMatchCase(const RegistryStore& settings)
{
    return settings.GetNumber(kSettings, kMatchCaseValue, 0) != 0;
}

void StoreFindChoices(RegistryStore* settings, const FindRequest& request)
{
    settings->SetNumber(kSettings, kSearchByValue, static_cast<DWORD>(FieldOf(request.by)->findButton));
    settings->SetNumber(kSettings, kMatchCaseValue, request.matchCase);
    settings->SetNumber(kSettings, kSearchFromValue, static_cast<DWORD>(ButtonOf(request.from)));
}

std::vector<std::wstring> ReadFindHistory(const RegistryStore& settings)
{
    std::vector<std::wstring> history;
    for (int i = 0; i < kHistoryLength; ++i) {
        std::wstring text = ReadHistoryText(settings, i);
        if (text.empty())
            break;
        history.push_back(std::move(text));
    }
    return history;
}

// Each place takes the text of the place before it, up to the first empty place.
void AddToFindHistory(RegistryStore* settings, const std::wstring& text)
{
    std::wstring placed = text;
    for (int i = 0; i < kHistoryLength && !placed.empty() && !IsInHistory(*settings, placed); ++i) {
        std::wstring stood = ReadHistoryText(*settings, i);
        settings->SetString(kOptions, HistoryName(i).c_str(), placed.c_str());
        placed = std::move(stood);
    }
}
