#include "util/clock.h"

#include <optional>

namespace {
std::optional<SYSTEMTIME> g_now;
}

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

ScopedClockForTesting::ScopedClockForTesting(const SYSTEMTIME& now)
{
    Set(now);
}
ScopedClockForTesting::~ScopedClockForTesting()
{
    g_now.reset();
}
void ScopedClockForTesting::Set(const SYSTEMTIME& now)
{
    g_now = now;
}
