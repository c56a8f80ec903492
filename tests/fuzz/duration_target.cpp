#include <cstring>
#include <string>

#include "targets.h"
#include "util/duration_text.h"

namespace fuzz {

namespace {

constexpr uint64_t kMinute = 600'000'000;
constexpr uint64_t kMonthOfMinutes = 31 * 24 * 60;

// What the phrase of a duration tells is what it is read as.
std::string TryPhrase(uint64_t units)
{
    constexpr size_t kLongest = 63; // characters, longer than every phrase
    std::wstring phrase = FormatDuration(TimeCount(units));
    if (phrase.empty() || phrase.size() > kLongest)
        return "a phrase is of another length";
    TimeCount read;
    if (!ParseDuration(phrase.data(), &read))
        return "a phrase is read as none";
    const uint64_t minutes = units / kMinute;
    return minutes >= kMonthOfMinutes || read.Units() == minutes * kMinute
               ? ""
               : "a phrase is read as another one";
}

} // namespace

std::string TryDuration(std::string_view bytes)
{
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    const std::wstring typed = text.c_str();
    TimeCount count;
    const bool isRead = ParseDuration(text.data(), &count) != 0;
    if (isRead != (typed.find_first_of(L"0123456789.") != std::wstring::npos))
        return "a text with a number is read as none, or one without as one";
    uint64_t units = 0;
    memcpy(&units, bytes.data(), std::min(bytes.size(), sizeof units));
    const std::string broken = TryPhrase(units);
    return broken.empty() ? TryPhrase(count.Units()) : broken;
}

} // namespace fuzz
