#include "editor/editor_times.h"

#include <gtest/gtest.h>

namespace {

constexpr uint64_t kMinute = 600'000'000;

EditorTimes TimesOf(uint64_t start, uint64_t end, uint64_t duration)
{
    return {TimeCount(start), TimeCount(end), TimeCount(duration)};
}

TEST(EditorTimes, StartsWithoutLength)
{
    EditorTimes times = TimesOf(1, 2, 3);
    times.StartAt(TimeCount(1000 * kMinute));
    EXPECT_EQ(times.start.Units(), 1000 * kMinute);
    EXPECT_EQ(times.end.Units(), 1000 * kMinute);
    EXPECT_EQ(times.duration.Units(), 0u);
}

constexpr SYSTEMTIME kStart{2024, 3, 2, 5, 14, 5, 30, 250};

SYSTEMTIME TimeOf(TimeCount count)
{
    SYSTEMTIME time{};
    EXPECT_TRUE(count.ToSystemTime(&time));
    return time;
}

TEST(EditorTimes, APickedDateThatLostItsTimeKeepsTheOneBefore)
{
    EditorTimes times;
    ASSERT_TRUE(times.start.FromSystemTime(kStart));
    ASSERT_TRUE(times.TakePickedDate({2025, 12, 0, 31, 0, 0, 0, 0}));
    const SYSTEMTIME start = TimeOf(times.start);
    EXPECT_EQ(start.wYear, 2025);
    EXPECT_EQ(start.wMonth, 12);
    EXPECT_EQ(start.wDay, 31);
    EXPECT_EQ(start.wHour, 14);
    EXPECT_EQ(start.wMinute, 5);
    EXPECT_EQ(start.wSecond, 30);
    EXPECT_EQ(start.wMilliseconds, 250);
}

TEST(EditorTimes, APickedDateWithATimeIsTakenWhole)
{
    EditorTimes times;
    ASSERT_TRUE(times.start.FromSystemTime(kStart));
    ASSERT_TRUE(times.TakePickedDate({2025, 12, 0, 31, 8, 0, 0, 0}));
    EXPECT_EQ(TimeOf(times.start).wHour, 8);
    EXPECT_EQ(TimeOf(times.start).wMinute, 0);
}

TEST(EditorTimes, AMidnightThatWasPickedAsATimeIsMidnight)
{
    EditorTimes times;
    ASSERT_TRUE(times.start.FromSystemTime(kStart));
    ASSERT_TRUE(times.TakePickedTime({2024, 3, 0, 5, 0, 0, 0, 0}));
    EXPECT_EQ(TimeOf(times.start).wHour, 0);
}

TEST(EditorTimes, AnImpossibleDateIsNotTaken)
{
    EditorTimes times;
    ASSERT_TRUE(times.start.FromSystemTime(kStart));
    const TimeCount before = times.start;
    EXPECT_FALSE(times.TakePickedDate({2024, 13, 0, 5, 0, 0, 0, 0}));
    EXPECT_FALSE(times.TakePickedTime({2024, 2, 0, 30, 9, 0, 0, 0}));
    EXPECT_EQ(times.start, before);
}

TEST(EditorTimes, EndFollowsStartAndDuration)
{
    EditorTimes times = TimesOf(5 * kMinute, 0, 7 * kMinute);
    times.FollowDuration();
    EXPECT_EQ(times.end.Units(), 12 * kMinute);
    EXPECT_EQ(times.start.Units(), 5 * kMinute);
    EXPECT_EQ(times.duration.Units(), 7 * kMinute);
}

TEST(EditorTimes, DurationFollowsTheEnds)
{
    EditorTimes times = TimesOf(5 * kMinute, 12 * kMinute, 99 * kMinute);
    times.FollowEnds();
    EXPECT_EQ(times.duration.Units(), 7 * kMinute);
    EXPECT_EQ(times.end.Units(), 12 * kMinute);
}

TEST(EditorTimes, AnEndBeforeTheStartWrapsAndComesBack)
{
    EditorTimes times = TimesOf(10 * kMinute, 4 * kMinute, 0);
    times.FollowEnds();
    EXPECT_EQ(times.duration.Units(), 0 - 6 * kMinute);
    EXPECT_EQ(times.DurationText(), L"0 minutes");
    times.FollowDuration();
    EXPECT_EQ(times.end.Units(), 4 * kMinute);
}

TEST(EditorTimes, TakesTypedDurations)
{
    EditorTimes times;
    times.duration = TimeCount(7 * kMinute);
    times.TakeDurationText(L"90");
    EXPECT_EQ(times.duration.Units(), 90 * kMinute);
    EXPECT_EQ(times.DurationText(), L"1 hour 30 min");
    times.TakeDurationText(L"1.5h");
    EXPECT_EQ(times.duration.Units(), 90 * kMinute);
    times.TakeDurationText(L"0.5 days");
    EXPECT_EQ(times.DurationText(), L"12 hours");
}

TEST(EditorTimes, TextWithoutANumberGivesNoDuration)
{
    EditorTimes times;
    times.duration = TimeCount(7 * kMinute);
    times.TakeDurationText(L"a while");
    EXPECT_EQ(times.duration.Units(), 0u);
    EXPECT_EQ(times.DurationText(), L"0 minutes");
}

TEST(EditorTimes, ReadsAHundredCharactersAndNoMore)
{
    EditorTimes times;
    times.TakeDurationText(std::wstring(99, L' ') + L"45");
    EXPECT_EQ(times.duration.Units(), 4 * kMinute);
    times.TakeDurationText(std::wstring(98, L' ') + L"45");
    EXPECT_EQ(times.duration.Units(), 45 * kMinute);
}

} // namespace
