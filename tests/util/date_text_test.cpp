#include "util/date_text.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/import_watch.h"
#include "support/locale_setting.h"

namespace {

TimeCount Instant(const SYSTEMTIME& time)
{
    TimeCount count;
    EXPECT_TRUE(count.FromSystemTime(time));
    return count;
}

std::wstring Text(TimeCount instant)
{
    return DateTimeText(instant);
}

std::wstring SystemText(const SYSTEMTIME& time)
{
    wchar_t date[60];
    wchar_t clock[60];
    EXPECT_TRUE(GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date, 60));
    EXPECT_TRUE(GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, clock, 60));
    return std::wstring(date) + L" " + clock;
}

constexpr SYSTEMTIME kLeapDay{2024, 2, 4, 29, 13, 5, 9, 0};

TEST(DateTimeText, IsShortDateBlankTimeWithoutSeconds)
{
    EXPECT_EQ(Text(Instant(kLeapDay)), L"2/29/2024 1:05 PM");
    EXPECT_EQ(Text(Instant({1999, 12, 5, 31, 0, 0, 59, 999})), L"12/31/1999 12:00 AM");
    EXPECT_EQ(Text(TimeCount()), L"1/1/1601 12:00 AM");
}

TEST(DateTimeText, IsWhatTheSystemSays)
{
    for (WORD hour = 0; hour < 24; ++hour) {
        const SYSTEMTIME time{2003, static_cast<WORD>(hour % 12 + 1), 0, 7, hour, 30, 0, 0};
        EXPECT_EQ(Text(Instant(time)), SystemText(time));
    }
}

TEST(DateTimeText, FollowsTheUsersLocale)
{
    const ScopedLocaleSetting date(LOCALE_SSHORTDATE, L"dd.MM.yyyy");
    const ScopedLocaleSetting time(LOCALE_STIMEFORMAT, L"HH:mm:ss");
    EXPECT_EQ(Text(Instant(kLeapDay)), L"29.02.2024 13:05");
}

TEST(DateTimeText, LongFormatsFit)
{
    const std::wstring letters(55, L'x');
    const ScopedLocaleSetting date(LOCALE_SSHORTDATE, (L"'" + letters + L"'yyyy").c_str());
    EXPECT_EQ(Text(Instant(kLeapDay)), letters + L"2024 1:05 PM");
}

TEST(DateTimeText, PartsThatDoNotFitSixtyCharactersGiveNothing)
{
    const ScopedLocaleSetting date(LOCALE_SSHORTDATE, (L"'" + std::wstring(56, L'x') + L"'yyyy").c_str());
    EXPECT_EQ(Text(Instant(kLeapDay)), L"");
}

TEST(DateTimeText, NorDoesATimeThatDoesNotFit)
{
    const auto timeOf = [](size_t letters) {
        const std::wstring format = L"'" + std::wstring(letters, L'x') + L"'HH:mm";
        const ScopedLocaleSetting time(LOCALE_STIMEFORMAT, format.c_str());
        return Text(Instant(kLeapDay));
    };
    EXPECT_EQ(timeOf(54), L"2/29/2024 " + std::wstring(54, L'x') + L"13:05");
    EXPECT_EQ(timeOf(57), L"");
}

TEST(DateTimeText, WhatIsNoDateGivesNothing)
{
    EXPECT_EQ(Text(TimeCount(uint64_t{1} << 63)), L"");
    EXPECT_EQ(Text(TimeCount(UINT64_MAX)), L"");
}

TEST(LongDateText, IsTheLongDate)
{
    EXPECT_EQ(LongDateText({2026, 1, 0, 31, 0, 0, 0, 0}), L"Saturday, January 31, 2026");
    EXPECT_EQ(LongDateText({2026, 2, 0, 31, 0, 0, 0, 0}), L"");
}

TEST(WeekdayName, IsTheFullNameOfTheDate)
{
    EXPECT_EQ(WeekdayName(kLeapDay), L"Thursday");
    EXPECT_EQ(WeekdayName({2000, 1, 0, 1, 0, 0, 0, 0}), L"Saturday"); // whatever wDayOfWeek says
    const wchar_t* const week[] = {L"Monday", L"Tuesday",  L"Wednesday", L"Thursday",
                                   L"Friday", L"Saturday", L"Sunday"};
    for (WORD day = 1; day <= 7; ++day)
        EXPECT_EQ(WeekdayName({2024, 1, 0, day, 0, 0, 0, 0}), week[day - 1]);
}

TEST(WeekdayName, IsEmptyForWhatIsNoDate)
{
    EXPECT_EQ(WeekdayName({2024, 2, 0, 30, 0, 0, 0, 0}), L"");
    EXPECT_EQ(WeekdayName({}), L"");
}

// What the system was asked for, in order.
struct DateRequest {
    LCID locale;
    DWORD flags;
    std::wstring picture;
    int size;
    friend bool operator==(const DateRequest&, const DateRequest&) = default;
};
std::vector<DateRequest> g_dates;
decltype(&GetDateFormatW) g_formatDate = nullptr;

int WINAPI NoteDate(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR picture, LPWSTR text, int size)
{
    g_dates.push_back({locale, flags, picture ? picture : L"", size});
    return g_formatDate(locale, flags, date, picture, text, size);
}

TEST(WeekdayName, IsAskedForInSixtyEightCharacters)
{
    g_dates.clear();
    g_formatDate = __imp_GetDateFormatW;
    {
        const ImportWatch<decltype(&GetDateFormatW)> watch(&__imp_GetDateFormatW, NoteDate);
        EXPECT_EQ(WeekdayName(kLeapDay), L"Thursday");
    }
    EXPECT_EQ(g_dates, (std::vector<DateRequest>{{LOCALE_USER_DEFAULT, 0, L"dddd", 68}}));
}

TEST(TimePickerFormat, AllCombinations)
{
    struct Case {
        const wchar_t* clock24;
        const wchar_t* markerPosition;
        const wchar_t* leadingZero;
        const wchar_t* separator;
        const wchar_t* expected;
    };
    const Case cases[] = {
        {L"0", L"0", L"0", L":", L"h:mm tt"},        {L"0", L"0", L"1", L":", L"hh:mm tt"},
        {L"0", L"1", L"0", L":", L"tt h:mm"},        {L"0", L"1", L"1", L":", L"tt hh:mm"},
        {L"1", L"0", L"0", L":", L"H:mm tt"},        {L"1", L"0", L"1", L":", L"HH:mm tt"},
        {L"1", L"1", L"0", L":", L"tt H:mm"},        {L"1", L"1", L"1", L":", L"tt HH:mm"},
        {L"0", L"0", L"0", L".", L"h.mm tt"},        {L"0", L"0", L"1", L".", L"hh.mm tt"},
        {L"0", L"1", L"0", L".", L"tt h.mm"},        {L"0", L"1", L"1", L".", L"tt hh.mm"},
        {L"1", L"0", L"0", L".", L"H.mm tt"},        {L"1", L"0", L"1", L".", L"HH.mm tt"},
        {L"1", L"1", L"0", L".", L"tt H.mm"},        {L"1", L"1", L"1", L".", L"tt HH.mm"},
        {L"0", L"0", L"0", L" : ", L"h : mm tt"},    {L"1", L"0", L"1", L" h ", L"HH' h 'mm tt"},
        {L"1", L"1", L"0", L"h", L"tt H'h'mm"},      {L"1", L"0", L"0", L"'", L"H''''mm tt"},
        {L"0", L"0", L"0", L" o'", L"h' o'''mm tt"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TimePickerFormat({c.clock24, c.markerPosition, c.leadingZero, c.separator}), c.expected);
}

TEST(TimePickerFormat, OnlyTheFirstCharacterCounts)
{
    EXPECT_EQ(TimePickerFormat({L"01", L"01", L"01", L":"}), L"h:mm tt");
    EXPECT_EQ(TimePickerFormat({L"10", L"x", L" 0", L":"}), L"tt HH:mm");
}

TEST(TimePickerFormat, MissingSettingsAreNotZero)
{
    EXPECT_EQ(TimePickerFormat({}), L"tt HHmm");
}

TEST(ReadTimePickerLocale, IsThatOfTheUser)
{
    EXPECT_EQ(TimePickerFormat(ReadTimePickerLocale()), L"h:mm tt");
    const ScopedLocaleSetting separator(LOCALE_STIME, L".");
    EXPECT_EQ(ReadTimePickerLocale().separator, L".");
}

std::vector<std::pair<LCTYPE, int>> g_settings;
decltype(&GetLocaleInfoW) g_readSetting = nullptr;

int WINAPI NoteSetting(LCID locale, LCTYPE type, LPWSTR text, int size)
{
    g_settings.emplace_back(type, size);
    return g_readSetting(locale, type, text, size);
}

TEST(ReadTimePickerLocale, AsksForEachInThirtyCharacters)
{
    g_settings.clear();
    g_readSetting = __imp_GetLocaleInfoW;
    {
        const ImportWatch<decltype(&GetLocaleInfoW)> watch(&__imp_GetLocaleInfoW, NoteSetting);
        (void)ReadTimePickerLocale();
    }
    EXPECT_EQ(g_settings,
              (std::vector<std::pair<LCTYPE, int>>{
                  {LOCALE_ITIME, 30}, {LOCALE_ITIMEMARKPOSN, 30}, {LOCALE_ITLZERO, 30}, {LOCALE_STIME, 30}}));
}

TEST(ReadTimePickerLocale, ReadsItsFourSettingsEachTime)
{
    const auto setting = [](LCTYPE type) {
        wchar_t text[30];
        EXPECT_TRUE(GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 30));
        return std::wstring(text);
    };
    const ScopedLocaleSetting format(LOCALE_STIMEFORMAT, L"tt HH-mm-ss");
    const TimePickerLocale locale = ReadTimePickerLocale();
    EXPECT_EQ(locale.clock24, setting(LOCALE_ITIME));
    EXPECT_EQ(locale.markerPosition, setting(LOCALE_ITIMEMARKPOSN));
    EXPECT_EQ(locale.leadingZero, setting(LOCALE_ITLZERO));
    EXPECT_EQ(locale.separator, setting(LOCALE_STIME));
    EXPECT_EQ(TimePickerFormat(locale), L"tt HH-mm");
}

} // namespace
