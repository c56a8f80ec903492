#include "util/date_text.h"

#include <algorithm>

namespace {

constexpr int kPartSize = 60;
constexpr int kLocaleSettingSize = 30;
constexpr int kLongDateSize = 120;

std::wstring LocaleSetting(LCTYPE type)
{
    wchar_t text[kLocaleSettingSize];
    return GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, kLocaleSettingSize) ? text : L"";
}

// A setting that is missing counts as one that is not "0".
bool IsOn(const std::wstring& setting)
{
    return setting.empty() || setting.front() != L'0';
}

const wchar_t* HourPart(bool clock24, bool leadingZero)
{
    if (clock24)
        return leadingZero ? L"HH" : L"H";
    return leadingZero ? L"hh" : L"h";
}

// A letter would be read as a part of the time, as the "h" of "13 h 05".
std::wstring Literal(const std::wstring& text)
{
    if (std::none_of(text.begin(), text.end(), [](wchar_t c) { return c == L'\'' || IsCharAlphaW(c); }))
        return text;
    std::wstring quoted = L"'";
    for (const wchar_t c : text)
        quoted.append(c == L'\'' ? 2 : 1, c);
    return quoted + L"'";
}

} // namespace

std::wstring DateTimeText(TimeCount instant)
{
    SYSTEMTIME time;
    wchar_t date[kPartSize];
    wchar_t clock[kPartSize];
    if (instant.ToSystemTime(&time) &&
        GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date, kPartSize) &&
        GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, clock, kPartSize))
        return std::wstring(date) + L' ' + clock;
    return {};
}

std::wstring LongDateText(const SYSTEMTIME& date)
{
    wchar_t text[kLongDateSize];
    return GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, text, kLongDateSize) ? text
                                                                                                   : L"";
}

std::wstring WeekdayName(const SYSTEMTIME& date)
{
    wchar_t name[kWeekdayTextSize];
    return GetDateFormatW(LOCALE_USER_DEFAULT, 0, &date, L"dddd", name, kWeekdayTextSize) ? name : L"";
}

TimePickerLocale ReadTimePickerLocale()
{
    return {LocaleSetting(LOCALE_ITIME), LocaleSetting(LOCALE_ITIMEMARKPOSN), LocaleSetting(LOCALE_ITLZERO),
            LocaleSetting(LOCALE_STIME)};
}

std::wstring TimePickerFormat(const TimePickerLocale& locale)
{
    const std::wstring time =
        HourPart(IsOn(locale.clock24), IsOn(locale.leadingZero)) + Literal(locale.separator) + L"mm";
    return IsOn(locale.markerPosition) ? L"tt " + time : time + L" tt";
}
