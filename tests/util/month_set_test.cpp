#include "util/month_set.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

TEST(MonthName, IsEnglishForTheTwelveMonths)
{
    const wchar_t* const names[] = {L"January",   L"February", L"March",    L"April",
                                    L"May",       L"June",     L"July",     L"August",
                                    L"September", L"October",  L"November", L"December"};
    for (int i = 0; i < 12; ++i) {
        ASSERT_NE(MonthName(i), nullptr);
        EXPECT_STREQ(MonthName(i), names[i]);
    }
}

TEST(MonthName, FieldsArePaddedWithZeros)
{
    for (int i = 0; i < 12; ++i) {
        for (size_t k = wcslen(MonthName(i)); k < 12; ++k)
            EXPECT_EQ(MonthName(i)[k], L'\0');
    }
}

TEST(MonthName, IsNoneForAnyOtherIndex)
{
    for (int index : {-1, 12, 13, INT_MIN, INT_MAX})
        EXPECT_EQ(MonthName(index), nullptr);
}

TEST(MonthBit, IsOneShiftedByTheIndex)
{
    EXPECT_EQ(MonthBit(0), 0x1u);
    EXPECT_EQ(MonthBit(5), 0x20u);
    EXPECT_EQ(MonthBit(11), 0x800u);
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(MonthBit(i), 1u << i);
}

TEST(MonthBit, IsZeroForAnyOtherIndex)
{
    for (int index : {-1, 12, 31, 32, INT_MIN, INT_MAX})
        EXPECT_EQ(MonthBit(index), 0u);
}

TEST(CountMonths, CountsTheTwelveLowBits)
{
    EXPECT_EQ(CountMonths(0), 0);
    EXPECT_EQ(CountMonths(0xFFF), 12);
    EXPECT_EQ(CountMonths(0x1000), 0);
    EXPECT_EQ(CountMonths(0x1001), 1);
    EXPECT_EQ(CountMonths(0x821), 3);
    EXPECT_EQ(CountMonths(0xFFFFFFFF), 12);
}

int Compare(SYSTEMTIME first, SYSTEMTIME second, uint32_t mask)
{
    return CompareDates(&first, &second, mask);
}

// year, month, day of the week, day, hour, minute, second, millisecond
constexpr SYSTEMTIME kMorning{2000, 3, 0, 5, 10, 0, 1, 2};
constexpr SYSTEMTIME kNight{2000, 3, 6, 5, 23, 59, 59, 999};

TEST(CompareDates, LooksAtTheDateOnly)
{
    EXPECT_EQ(Compare(kMorning, kNight, kDateOnly), 0);
    EXPECT_EQ(Compare({2000, 3, 0, 4, 23, 59, 59, 0}, kMorning, kDateOnly), -1);
    EXPECT_EQ(Compare(kMorning, {2000, 3, 0, 4, 23, 59, 59, 0}, kDateOnly), 1);
    EXPECT_EQ(Compare({1999, 12, 0, 31, 0, 0, 0, 0}, {2000, 1, 0, 1, 0, 0, 0, 0}, kDateOnly), -1);
    EXPECT_EQ(Compare({2000, 4, 0, 1, 0, 0, 0, 0}, {2000, 3, 0, 31, 0, 0, 0, 0}, kDateOnly), 1);
}

TEST(CompareDates, ClearsTheOtherFieldsOfBothStructures)
{
    SYSTEMTIME first = kMorning;
    SYSTEMTIME second = kNight;
    EXPECT_EQ(CompareDates(&first, &second, 0x7), 0);
    for (const SYSTEMTIME& time : {first, second}) {
        EXPECT_EQ(time.wYear, 2000);
        EXPECT_EQ(time.wMonth, 3);
        EXPECT_EQ(time.wDay, 5);
        EXPECT_EQ(time.wDayOfWeek, 0);
        EXPECT_EQ(time.wHour, 0);
        EXPECT_EQ(time.wMinute, 0);
        EXPECT_EQ(time.wSecond, 0);
        EXPECT_EQ(time.wMilliseconds, 0);
    }
}

struct Field {
    uint32_t bit;
    WORD SYSTEMTIME::*field;
};
constexpr Field kFields[] = {
    {0x1, &SYSTEMTIME::wMonth},       {0x2, &SYSTEMTIME::wDay},
    {0x4, &SYSTEMTIME::wYear},        {0x10, &SYSTEMTIME::wSecond},
    {0x20, &SYSTEMTIME::wHour},       {0x40, &SYSTEMTIME::wMinute},
    {0x100, &SYSTEMTIME::wDayOfWeek}, {0x200, &SYSTEMTIME::wMilliseconds},
};

TEST(CompareDates, EachBitKeepsItsField)
{
    for (const Field& kept : kFields) {
        SYSTEMTIME first{2001, 2, 3, 4, 5, 6, 7, 8};
        SYSTEMTIME second = first;
        CompareDates(&first, &second, kept.bit);
        for (const Field& field : kFields) {
            EXPECT_EQ(first.*field.field != 0, field.bit == kept.bit) << kept.bit << " " << field.bit;
            EXPECT_EQ(first.*field.field, second.*field.field);
        }
    }
}

TEST(CompareDates, OtherBitsMeanNothing)
{
    SYSTEMTIME first = kMorning;
    SYSTEMTIME second = kNight;
    EXPECT_EQ(CompareDates(&first, &second, kDateOnly | 0xFFFFFC88), 0);
    EXPECT_EQ(first.wHour, 0);
}

TEST(CompareDates, ComparesTheTimeWhenTheMaskHasIt)
{
    EXPECT_EQ(Compare(kMorning, kNight, kDateOnly | kFieldHour), -1);
    EXPECT_EQ(Compare({2000, 3, 0, 5, 1, 2, 3, 5}, {2000, 3, 0, 5, 1, 2, 3, 4}, 0x377), 1);
    EXPECT_EQ(Compare({2000, 3, 0, 5, 1, 2, 3, 5}, {2000, 3, 0, 5, 1, 2, 3, 4}, 0x177), 0);
}

TEST(CompareDates, WhatIsNoDateComesFirst)
{
    EXPECT_EQ(Compare({2000, 13, 0, 1, 0, 0, 0, 0}, kMorning, kDateOnly), -1);
    EXPECT_EQ(Compare(kMorning, kNight, 0), 0);
}

} // namespace
