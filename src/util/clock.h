// The one place that tells the time. Tests set it; nothing else in the product does.
#pragma once

#include <windows.h>

#include "util/time_count.h"

// The local wall-clock time, or the time that a test has set.
SYSTEMTIME LocalNow();
TimeCount LocalNowCount();

// How long the system has been awake since it was started: it only grows, whoever sets the clock, and stands
// still while the system sleeps. For measuring how long something takes.
TimeCount AwakeCount();

// Holds the clock still at a time, and the system's age at zero, while it lives; the latest one counts.
class ScopedClockForTesting {
  public:
    explicit ScopedClockForTesting(const SYSTEMTIME& now);
    ~ScopedClockForTesting();
    ScopedClockForTesting(const ScopedClockForTesting&) = delete;
    ScopedClockForTesting& operator=(const ScopedClockForTesting&) = delete;

    void Set(const SYSTEMTIME& now);
    void SetAwake(TimeCount age);
};
