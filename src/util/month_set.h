// English month names, 12-bit month sets and the comparison of chosen date fields.
#pragma once

#include <windows.h>

#include <cstdint>

constexpr int kMonthCount = 12;

// The English name for index 0 (January) to 11 (December), whatever the locale; null for any other index.
const wchar_t* MonthName(int index);

// 1 << index for 0 to 11; 0 for any other index.
uint32_t MonthBit(int index);

// How many of the bits 0 to 11 are set; higher bits are not counted.
int CountMonths(uint32_t set);

// Field mask bits: which SYSTEMTIME fields take part in a comparison.
constexpr uint32_t kFieldMonth = 0x1;
constexpr uint32_t kFieldDay = 0x2;
constexpr uint32_t kFieldYear = 0x4;
constexpr uint32_t kFieldSecond = 0x10;
constexpr uint32_t kFieldHour = 0x20;
constexpr uint32_t kFieldMinute = 0x40;
constexpr uint32_t kFieldDayOfWeek = 0x100;
constexpr uint32_t kFieldMilliseconds = 0x200;
constexpr uint32_t kDateOnly = kFieldMonth | kFieldDay | kFieldYear;

// -1, 0 or 1 for first against second. Clears every field whose bit is not in the mask IN BOTH structures:
// hand over copies.
// Kept: how the handheld compared days; a filter's test does it in units of time, once for many records.
int CompareDates(SYSTEMTIME* first, SYSTEMTIME* second, uint32_t mask);
