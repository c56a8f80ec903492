#include "util/time_count.h"

#include <gtest/gtest.h>

namespace {

TEST(TimeCount, AddsInItsUnits)
{
    TimeCount count;
    count.AddDays(1);
    EXPECT_EQ(count.Units(), 864'000'000'000u);
    count.Zero();
    count.AddHours(1);
    EXPECT_EQ(count.Units(), 36'000'000'000u);
    count.Zero();
    count.AddMinutes(1);
    EXPECT_EQ(count.Units(), 600'000'000u);
    count.Zero();
    count.AddSeconds(1);
    EXPECT_EQ(count.Units(), 10'000'000u);
}

TEST(TimeCount, FormsProductsIn64Bits)
{
    TimeCount count;
    count.AddDays(INT32_MAX);
    EXPECT_EQ(count.Units(), 2'147'483'647ull * 864'000'000'000ull);
}

TEST(TimeCount, NegativeCountsWrap)
{
    TimeCount count(5);
    count.AddSeconds(-1);
    EXPECT_EQ(count.Units(), 5ull - 10'000'000ull);
}

TEST(TimeCount, HalvesAreLowAndHigh)
{
    TimeCount count;
    count.Set(0x89ABCDEF, 0x01234567);
    EXPECT_EQ(count.Units(), 0x0123456789ABCDEFull);
    EXPECT_EQ(count.Low(), 0x89ABCDEFu);
    EXPECT_EQ(count.High(), 0x01234567u);
}

TEST(TimeCount, RefusesWhatIsNoDate)
{
    SYSTEMTIME time{};
    time.wYear = 7;
    EXPECT_FALSE(TimeCount(uint64_t{1} << 63).ToSystemTime(&time));
    EXPECT_EQ(time.wYear, 7);
    TimeCount count(42);
    EXPECT_FALSE(count.FromSystemTime({2024, 2, 0, 30, 0, 0, 0, 0}));
    EXPECT_EQ(count.Units(), 42u);
    ASSERT_TRUE(TimeCount().ToSystemTime(&time));
    EXPECT_EQ(time.wYear, 1601);
    EXPECT_EQ(time.wDay, 1);
}

} // namespace
