#include "util/clock.h"

#include <realtimeapiset.h>

#include <optional>

namespace {
std::optional<SYSTEMTIME> g_now;
std::optional<TimeCount> g_awake;
} // namespace

SYSTEMTIME LocalNow()
{
    if (g_now)
        return *g_now;
    SYSTEMTIME now;
    GetLocalTime(&now);
    return now;
}

TimeCount LocalNowCount()
{
    TimeCount count;
    // The system's own time always converts; a test's impossible one reads as zero.
    (void)count.FromSystemTime(LocalNow());
    return count;
}

TimeCount AwakeCount()
{
    if (g_awake)
        return *g_awake;
    ULONGLONG age = 0;
    QueryUnbiasedInterruptTime(&age);
    return TimeCount(age);
}

ScopedClockForTesting::ScopedClockForTesting(const SYSTEMTIME& now)
{
    Set(now);
    SetAwake(TimeCount());
}
ScopedClockForTesting::~ScopedClockForTesting()
{
    g_now.reset();
    g_awake.reset();
}
void ScopedClockForTesting::Set(const SYSTEMTIME& now)
{
    g_now = now;
}
void ScopedClockForTesting::SetAwake(TimeCount age)
{
    g_awake = age;
}
