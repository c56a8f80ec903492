// Dates and times as text in the user's locale, and the display format of the time pickers.
#pragma once

#include <windows.h>

#include <string>

#include "util/time_count.h"

constexpr int kWeekdayTextSize = 68;

// The short date, one blank and the time without seconds; empty when the instant is no date.
std::wstring DateTimeText(TimeCount instant);

// The long date in the user's locale, "Saturday, January 31, 2026"; empty when the time is no date.
std::wstring LongDateText(const SYSTEMTIME& date);

// The full name of the date's weekday in the user's locale; empty when the time is no date.
std::wstring WeekdayName(const SYSTEMTIME& date);

// The locale settings that a time picker's format is made of, each as GetLocaleInfoW gives it.
struct TimePickerLocale {
    std::wstring clock24;        // LOCALE_ITIME
    std::wstring markerPosition; // LOCALE_ITIMEMARKPOSN
    std::wstring leadingZero;    // LOCALE_ITLZERO
    std::wstring separator;      // LOCALE_STIME
};
TimePickerLocale ReadTimePickerLocale();

// For example "h:mm tt" or "HH:mm tt"; the AM/PM marker is always there.
std::wstring TimePickerFormat(const TimePickerLocale& locale);
