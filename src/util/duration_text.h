// Durations as short English phrases, and back. Plain functions without state.
#pragma once

#include <string>

#include "util/time_count.h"

// The phrase for a duration, for example "1 hour 30 min". Seconds are dropped. Days come from the day of the
// month, so the phrase wraps at 31 days. A count that is no date reads "0 minutes".
std::wstring FormatDuration(TimeCount duration);

// Adds what the user typed to duration, which the caller has zeroed. Converts text to upper case in place
// from its first digit or point on. Returns 1 when at least one number was applied, 0 when there is none. A
// number is digits with at most one point, whatever the locale; its unit is the first of the letters M, H, D,
// W and S behind it, without one it counts minutes. A whole part beyond 32 bits counts as the largest number
// they hold.
int ParseDuration(wchar_t* text, TimeCount* duration);
