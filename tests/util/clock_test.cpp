#include "util/clock.h"

#include <gtest/gtest.h>

namespace {

TEST(ClockTest, TheSystemsAgeGrowsAsTimePasses)
{
    const TimeCount before = AwakeCount();
    const ULONGLONG ticks = GetTickCount64();
    while (GetTickCount64() - ticks < 100)
        SwitchToThread();
    const uint64_t passed = (AwakeCount() - before).Units() / 10'000;
    EXPECT_GE(passed, 80u) << "milliseconds; the two counts tick apart";
    EXPECT_LT(passed, 60'000u);
}

TEST(ClockTest, ATestHoldsBothStill)
{
    const SYSTEMTIME now{2024, 3, 2, 5, 14, 5, 30, 250};
    ScopedClockForTesting clock(now);
    EXPECT_EQ(AwakeCount(), TimeCount());
    clock.SetAwake(TimeCount(7));
    EXPECT_EQ(AwakeCount(), TimeCount(7));
    EXPECT_EQ(LocalNow().wYear, 2024);
}

} // namespace
