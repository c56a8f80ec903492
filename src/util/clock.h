// The one place that tells the local time. Tests set it; nothing else in the product does.
#pragma once

#include <windows.h>

#include "util/time_count.h"

// The local wall-clock time, or the time that a test has set.
SYSTEMTIME LocalNow();
TimeCount LocalNowCount();

// Holds the clock still at a time while it lives; the latest one counts.
class ScopedClockForTesting {
  public:
    explicit ScopedClockForTesting(const SYSTEMTIME& now);
    ~ScopedClockForTesting();
    ScopedClockForTesting(const ScopedClockForTesting&) = delete;
    ScopedClockForTesting& operator=(const ScopedClockForTesting&) = delete;

    void Set(const SYSTEMTIME& now);
};
