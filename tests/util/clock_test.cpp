#include "util/clock.h"

#include "support/import_watch.h"

namespace {

void WINAPI LastOfJanuary(SYSTEMTIME* time)
{
    *time = {2026, 1, 6, 31, 10, 11, 12, 13};
}

// Days since 1601 times 864,000,000,000, and what has passed of the day.
constexpr uint64_t kLastOfJanuary = 155'258ull * 864'000'000'000 + 366'720'130'000;

TEST(Clock, TellsTheLocalTimeOfTheSystem)
{
    const ImportWatch<decltype(&GetLocalTime)> watch(&__imp_GetLocalTime, LastOfJanuary);
    const SYSTEMTIME now = LocalNow();
    EXPECT_EQ(now.wYear, 2026);
    EXPECT_EQ(now.wMonth, 1);
    EXPECT_EQ(now.wDay, 31);
    EXPECT_EQ(now.wHour, 10);
    EXPECT_EQ(now.wMinute, 11);
    EXPECT_EQ(now.wSecond, 12);
    EXPECT_EQ(now.wMilliseconds, 13);
    EXPECT_EQ(LocalNowCount().Units(), kLastOfJanuary);
}

} // namespace
