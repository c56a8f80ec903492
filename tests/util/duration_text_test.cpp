#include "util/duration_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "util/owners.h"

namespace {

constexpr uint64_t kMinute = 600'000'000;
constexpr uint64_t kHour = 60 * kMinute;
constexpr uint64_t kDay = 24 * kHour;
constexpr uint64_t kSecond = 10'000'000;

std::wstring Formatted(uint64_t units)
{
    return FormatDuration(TimeCount(units));
}

struct Parsed {
    int result;
    uint64_t units;
    std::wstring text; // as the parser left it
};

Parsed Parse(std::wstring text)
{
    TimeCount count;
    const int result = ParseDuration(text.data(), &count);
    return {result, count.Units(), text.c_str()};
}

uint64_t ParsedUnits(const std::wstring& text)
{
    const Parsed parsed = Parse(text);
    EXPECT_EQ(parsed.result, 1);
    return parsed.units;
}

TEST(FormatDuration, DaysHoursAndMinutes)
{
    EXPECT_EQ(Formatted(kDay + kHour + kMinute), L"1 dy 1 hour 1 mn");
    EXPECT_EQ(Formatted(kDay + 2 * kHour + kMinute), L"1 dy 2 hrs 1 mn");
    EXPECT_EQ(Formatted(3 * kDay + 2 * kHour + 15 * kMinute), L"3 dys 2 hrs 15 mn");
    EXPECT_EQ(Formatted(2 * kDay + kHour + 59 * kMinute), L"2 dys 1 hour 59 mn");
}

TEST(FormatDuration, DaysAndMinutesNameTheMissingHours)
{
    EXPECT_EQ(Formatted(kDay + 20 * kMinute), L"1 dy 0 hrs 20 mn");
    EXPECT_EQ(Formatted(2 * kDay + kMinute), L"2 dys 0 hrs 1 mn");
}

TEST(FormatDuration, DaysAndHours)
{
    EXPECT_EQ(Formatted(kDay + 5 * kHour), L"1 day 5 hrs");
    EXPECT_EQ(Formatted(2 * kDay + kHour), L"2 days 1 hour");
}

TEST(FormatDuration, WholeDays)
{
    EXPECT_EQ(Formatted(kDay), L"1 day");
    EXPECT_EQ(Formatted(6 * kDay), L"6 days");
    EXPECT_EQ(Formatted(30 * kDay), L"30 days");
}

TEST(FormatDuration, HoursAndMinutes)
{
    EXPECT_EQ(Formatted(kHour + 30 * kMinute), L"1 hour 30 min");
    EXPECT_EQ(Formatted(kHour + kMinute), L"1 hour 1 minute");
    EXPECT_EQ(Formatted(2 * kHour + kMinute), L"2 hrs 1 minute");
    EXPECT_EQ(Formatted(23 * kHour + 59 * kMinute), L"23 hrs 59 min");
}

TEST(FormatDuration, WholeHours)
{
    EXPECT_EQ(Formatted(kHour), L"1 hour");
    EXPECT_EQ(Formatted(120 * kMinute), L"2 hours");
    EXPECT_EQ(Formatted(4 * kHour), L"4 hours");
}

TEST(FormatDuration, Minutes)
{
    EXPECT_EQ(Formatted(kMinute), L"1 minute");
    EXPECT_EQ(Formatted(45 * kMinute), L"45 minutes");
}

TEST(FormatDuration, NothingIsZeroMinutes)
{
    EXPECT_EQ(Formatted(0), L"0 minutes");
}

TEST(FormatDuration, SecondsAreDropped)
{
    EXPECT_EQ(Formatted(kMinute - 1), L"0 minutes");
    EXPECT_EQ(Formatted(2 * kMinute - 1), L"1 minute");
    EXPECT_EQ(Formatted(kDay - 1), L"23 hrs 59 min");
}

TEST(FormatDuration, WrapsWithTheDayOfTheMonth)
{
    EXPECT_EQ(Formatted(31 * kDay), L"0 minutes");
    EXPECT_EQ(Formatted(31 * kDay + 5 * kMinute), L"5 minutes");
    EXPECT_EQ(Formatted(32 * kDay), L"1 day");
    EXPECT_EQ(Formatted(58 * kDay), L"27 days"); // 28 February
    EXPECT_EQ(Formatted(59 * kDay), L"0 minutes");
    EXPECT_EQ(Formatted(365 * kDay + kHour), L"1 hour");
}

TEST(FormatDuration, WhatIsNoDateIsZeroMinutes)
{
    EXPECT_EQ(Formatted(uint64_t{1} << 63), L"0 minutes");
    EXPECT_EQ(Formatted(UINT64_MAX), L"0 minutes");
    EXPECT_EQ(Formatted(uint64_t{0} - 90 * kMinute), L"0 minutes");
}

TEST(ParseDuration, NumbersWithoutAUnitAreMinutes)
{
    EXPECT_EQ(ParsedUnits(L"90"), 90 * kMinute);
    EXPECT_EQ(ParsedUnits(L"1.5"), kMinute);
    EXPECT_EQ(ParsedUnits(L"  7  "), 7 * kMinute);
    EXPECT_EQ(ParsedUnits(L"1 2 3"), kMinute);
    EXPECT_EQ(ParsedUnits(L"1h 30"), kHour + 30 * kMinute);
}

TEST(ParseDuration, NoNumberIsNothing)
{
    for (const wchar_t* text : {L"abc", L"", L"hours", L"-", L"\x0661\x0662 h"}) {
        const Parsed parsed = Parse(text);
        EXPECT_EQ(parsed.result, 0);
        EXPECT_EQ(parsed.units, 0u);
        EXPECT_EQ(parsed.text, text);
    }
}

TEST(ParseDuration, OnlyAdds)
{
    wchar_t text[] = L"1h";
    TimeCount count(5);
    EXPECT_EQ(ParseDuration(text, &count), 1);
    EXPECT_EQ(count.Units(), kHour + 5);
}

TEST(ParseDuration, Days)
{
    EXPECT_EQ(ParsedUnits(L"2.5 d"), 2 * kDay + 12 * kHour);
    EXPECT_EQ(ParsedUnits(L"0.5 days"), 12 * kHour);
    EXPECT_EQ(ParsedUnits(L"3 dys"), 3 * kDay);
    EXPECT_EQ(ParsedUnits(L"1.04 d"), kDay); // 0.96 of an hour
    EXPECT_EQ(ParsedUnits(L"2 days 3 hours"), 2 * kDay + 3 * kHour);
}

TEST(ParseDuration, Hours)
{
    EXPECT_EQ(ParsedUnits(L"1.5h"), 90 * kMinute);
    EXPECT_EQ(ParsedUnits(L"0.05 h"), 3 * kMinute);
    EXPECT_EQ(ParsedUnits(L".25 hrs"), 15 * kMinute);
    EXPECT_EQ(ParsedUnits(L"5.h"), 5 * kHour);
    EXPECT_EQ(ParsedUnits(L"0.01 h"), 0u);
}

TEST(ParseDuration, FractionsAreThoseOfTheBinaryNumber)
{
    EXPECT_EQ(ParsedUnits(L"1.2h"), kHour + 11 * kMinute); // 0.19999999999999996 of an hour
    EXPECT_EQ(ParsedUnits(L"0.2h"), 12 * kMinute);
    EXPECT_EQ(ParsedUnits(L"2.1h"), 2 * kHour + 6 * kMinute);
    EXPECT_EQ(ParsedUnits(L"1.1h"), kHour + 6 * kMinute);
    EXPECT_EQ(ParsedUnits(L"4.1h"), 4 * kHour + 5 * kMinute);
}

TEST(ParseDuration, MinutesAndSecondsDropTheirFraction)
{
    EXPECT_EQ(ParsedUnits(L"2.9 min"), 2 * kMinute);
    EXPECT_EQ(ParsedUnits(L"2 mn"), 2 * kMinute);
    EXPECT_EQ(ParsedUnits(L"2 minutes"), 2 * kMinute);
    EXPECT_EQ(ParsedUnits(L"30 s"), 30 * kSecond);
    EXPECT_EQ(ParsedUnits(L"1.9 sec"), kSecond);
}

TEST(ParseDuration, WeeksCountAsDaysAndTheirFractionAsSevenths)
{
    EXPECT_EQ(ParsedUnits(L"2 weeks"), 2 * kDay);
    EXPECT_EQ(ParsedUnits(L"1.5 w"), 4 * kDay);
    EXPECT_EQ(ParsedUnits(L"0.5 wk"), 3 * kDay);
    EXPECT_EQ(ParsedUnits(L"0.1 wk"), 0u);
}

TEST(ParseDuration, TheUnitIsTheFirstUnitLetterBehindTheNumber)
{
    EXPECT_EQ(ParsedUnits(L"1 2 h"), kHour);
    EXPECT_EQ(ParsedUnits(L"5 foo bar m"), 5 * kMinute);
    EXPECT_EQ(ParsedUnits(L"5 xyz 3 d 2 h"), 5 * kDay + 2 * kHour);
    EXPECT_EQ(ParsedUnits(L"m 5 h"), 5 * kHour);
    EXPECT_EQ(ParsedUnits(L"1m2h3d4s5w"), kMinute + 2 * kHour + 3 * kDay + 4 * kSecond + 5 * kDay);
    EXPECT_EQ(ParsedUnits(L"1 DAY 2 Hrs"), kDay + 2 * kHour);
}

TEST(ParseDuration, ASignIsNoPartOfANumber)
{
    EXPECT_EQ(ParsedUnits(L"-2h"), 2 * kHour);
    EXPECT_EQ(ParsedUnits(L"+2h"), 2 * kHour);
}

TEST(ParseDuration, APointAloneIsANumberOfNothing)
{
    for (const wchar_t* text : {L".", L". h", L"..", L"h .", L"...5 h"})
        EXPECT_EQ(ParsedUnits(text), 0u);
    EXPECT_EQ(ParsedUnits(L". h 5 m"), 5 * kMinute);
    EXPECT_EQ(ParsedUnits(L"1h .5h"), 90 * kMinute); // also where it begins the next number
}

TEST(ParseDuration, ASecondPointEndsTheNumber)
{
    EXPECT_EQ(ParsedUnits(L"1.2.3"), kMinute);
    EXPECT_EQ(ParsedUnits(L"1.5.9 h"), 90 * kMinute);
    EXPECT_EQ(ParsedUnits(L"2..5 h"), 2 * kHour);
}

TEST(ParseDuration, ANumberIsDigitsAndAPointAndNoMore)
{
    EXPECT_EQ(ParsedUnits(L"1e5"), kMinute);
    EXPECT_EQ(ParsedUnits(L"1e5 h"), kHour);
    EXPECT_EQ(ParsedUnits(L"0x10 h"), 0u);
    EXPECT_EQ(ParsedUnits(L"1,5 h"), kHour);
    EXPECT_EQ(ParsedUnits(L"1p3 h"), kHour);
    EXPECT_EQ(Parse(L"infinity h").result, 0);
    EXPECT_EQ(Parse(L"nan h").result, 0);
}

TEST(ParseDuration, UpperCasesFromTheFirstDigitOrPointOn)
{
    EXPECT_EQ(Parse(L"about 2 days, 3 hrs \xe9").text, L"about 2 DAYS, 3 HRS \xc9");
    EXPECT_EQ(Parse(L"about .x").text, L"about .X");
    EXPECT_EQ(Parse(L"5 min then nothing").text, L"5 MIN THEN NOTHING");
}

TEST(ParseDuration, HugeNumbersStopAtWhat32BitsHold)
{
    constexpr uint64_t kMost = INT32_MAX;
    EXPECT_EQ(ParsedUnits(L"2147483647 s"), kMost * kSecond);
    EXPECT_EQ(ParsedUnits(L"2147483648 s"), kMost * kSecond);
    EXPECT_EQ(ParsedUnits(L"2147483646.9 s"), (kMost - 1) * kSecond);
    EXPECT_EQ(ParsedUnits(L"99999999999999999999"), kMost * kMinute);
    EXPECT_EQ(ParsedUnits(std::wstring(1000, L'9') + L" s"), kMost * kSecond);
    EXPECT_EQ(ParsedUnits(std::wstring(1000, L'9') + L".5 s"), kMost * kSecond);
    EXPECT_EQ(ParsedUnits(std::wstring(1000, L'9') + L" d"), kMost * kDay); // wraps at 64 bits
}

TEST(ParseDuration, LongNumbersOfLittleStayLittle)
{
    EXPECT_EQ(ParsedUnits(std::wstring(1000, L'0') + L"7 s"), 7 * kSecond);
    EXPECT_EQ(ParsedUnits(L"0." + std::wstring(1000, L'0') + L"1 d"), 0u);
    EXPECT_EQ(ParsedUnits(L"." + std::wstring(1000, L'0') + L"1 d"), 0u);
    EXPECT_EQ(ParsedUnits(L"00." + std::wstring(1000, L'0') + L"1 w"), 0u);
    EXPECT_EQ(ParsedUnits(L"3." + std::wstring(1000, L'0') + L"1 d"), 3 * kDay);
    EXPECT_EQ(ParsedUnits(L"0.5" + std::wstring(1000, L'0') + L" d"), 12 * kHour);
}

// The C library reads plain digits alike.
TEST(ParseDuration, ReadsNumbersAsTheLibraryDoes)
{
    for (int whole = 0; whole < 40; ++whole) {
        for (int hundredths = 0; hundredths < 100; ++hundredths) {
            wchar_t text[32];
            swprintf(text, 32, L"%d.%02d", whole, hundredths);
            double integral;
            const double fraction = std::modf(wcstod(text, nullptr), &integral);
            const auto hours = static_cast<uint64_t>(integral);
            EXPECT_EQ(ParsedUnits(std::wstring(text) + L"h"),
                      hours * kHour + static_cast<uint64_t>(fraction * 60) * kMinute)
                << whole << "." << hundredths;
            EXPECT_EQ(ParsedUnits(std::wstring(text) + L"d"),
                      hours * kDay + static_cast<uint64_t>(fraction * 24) * kHour);
            EXPECT_EQ(ParsedUnits(std::wstring(text) + L"w"),
                      (hours + static_cast<uint64_t>(fraction * 7)) * kDay);
        }
    }
}

TEST(ParseDuration, ReadsBackEveryPhrase)
{
    for (uint64_t minutes = 0; minutes < 31 * 24 * 60; ++minutes) {
        std::wstring text = FormatDuration(TimeCount(minutes * kMinute));
        TimeCount count;
        ASSERT_EQ(ParseDuration(text.data(), &count), 1);
        ASSERT_EQ(count.Units(), minutes * kMinute);
    }
}

// Two pages, of which the second cannot be touched: a text at the end of the first must not be left.
class GuardedText {
  public:
    GuardedText()
    {
        m_pages =
            static_cast<wchar_t*>(VirtualAlloc(nullptr, 0x2000, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD before;
        EXPECT_TRUE(VirtualProtect(m_pages + kPage, 0x1000, PAGE_NOACCESS, &before));
    }
    ~GuardedText() { VirtualFree(m_pages, 0, MEM_RELEASE); }
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;

    wchar_t* Put(const std::wstring& text)
    {
        wchar_t* const start = m_pages + kPage - text.size() - 1;
        std::copy(text.c_str(), text.c_str() + text.size() + 1, start);
        return start;
    }

  private:
    static constexpr size_t kPage = 0x1000 / sizeof(wchar_t);
    wchar_t* m_pages;
};

TEST(ParseDuration, StaysInsideAnyText)
{
    const std::wstring alphabet = L"0123456789..  hHdDmMsSwWxe-+,\x20ac\xdf\xd83d";
    std::mt19937 random(20240229);
    GuardedText guarded;
    for (int i = 0; i < 20000; ++i) {
        std::wstring text(random() % 24, L' ');
        for (wchar_t& character : text)
            character = alphabet[random() % alphabet.size()];
        wchar_t* const start = guarded.Put(text);
        TimeCount count;
        const bool hasNumber = text.find_first_of(L"0123456789.") != std::wstring::npos;
        ASSERT_EQ(ParseDuration(start, &count), hasNumber);
        ASSERT_EQ(wcslen(start), text.size());
        const size_t kept = std::min(text.find_first_of(L"0123456789."), text.size());
        ASSERT_EQ(text.compare(0, kept, start, kept), 0);
    }
}

} // namespace
