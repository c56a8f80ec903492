#include "filter/passes_filter.h"

#include <random>

#include "filter/filter_fixture.h"
#include "mervane/db_categories.h"
#include "util/month_set.h"

namespace {

int Passes(const FilterState& filter, const TestRecord& record)
{
    return PassesFilter(filter, record.Count(), record.Properties());
}

FilterState Months(DWORD mask)
{
    FilterState filter;
    filter.active = true;
    filter.monthMask = mask;
    return filter;
}

FilterState Range(const SYSTEMTIME& start, const SYSTEMTIME& end)
{
    FilterState filter;
    filter.active = true;
    filter.rangeMode = true;
    filter.rangeStart = start;
    filter.rangeEnd = end;
    return filter;
}

FilterState Categories(std::vector<CEOID> ids)
{
    FilterState filter;
    filter.active = true;
    filter.categoriesMode = true;
    for (const CEOID id : ids)
        filter.categories.Push({id, 0});
    return filter;
}

TestRecord On(WORD month, WORD day, WORD hour = 0, WORD minute = 0)
{
    TestRecord record;
    record.Time(kPropDate, Instant(2001, month, day, hour, minute));
    return record;
}

using PassesFilterTest = JournalTest;

TEST_F(PassesFilterTest, EverythingPassesWhileInactive)
{
    FilterState filter = Months(0);
    filter.active = false;
    EXPECT_EQ(Passes(filter, On(5, 1)), 1);
    filter.categoriesMode = true;
    EXPECT_EQ(Passes(filter, On(5, 1)), 1);
}

TEST_F(PassesFilterTest, ARecordWithoutPropertiesPasses)
{
    EXPECT_EQ(PassesFilter(Months(0), 0, nullptr), 1);
    EXPECT_EQ(PassesFilter(Categories({1}), 0, nullptr), 1);
}

TEST_F(PassesFilterTest, MonthsOfAnyYear)
{
    const FilterState march = Months(0x4);
    EXPECT_EQ(Passes(march, On(3, 31, 23, 59)), 1);
    EXPECT_EQ(Passes(march, On(4, 1)), 0);
    TestRecord other;
    other.Time(kPropDate, Instant(1987, 3, 1));
    EXPECT_EQ(Passes(march, other), 1);
    EXPECT_EQ(Passes(Months(0x801), On(12, 1)), 1);
    EXPECT_EQ(Passes(Months(0x801), On(1, 1)), 1);
    EXPECT_EQ(Passes(Months(0x801), On(2, 1)), 0);
    EXPECT_EQ(Passes(Months(0xFFFFF000), On(2, 1)), 0);
}

TEST_F(PassesFilterTest, RangesTakeBothEndsWhatTheHour)
{
    const FilterState range = Range({2001, 3, 5, 30, 22, 0, 0, 0}, {2001, 3, 2, 31, 8, 0, 0, 5});
    EXPECT_EQ(Passes(range, On(3, 29, 23, 59)), 0);
    EXPECT_EQ(Passes(range, On(3, 30, 0, 0)), 1);
    EXPECT_EQ(Passes(range, On(3, 31, 23, 59)), 1);
    EXPECT_EQ(Passes(range, On(4, 1, 0, 0)), 0);
    EXPECT_EQ(range.rangeStart.wHour, 22); // the filter itself is left as it is
    EXPECT_EQ(Passes(Range({2001, 4, 0, 1, 0, 0, 0, 0}, {2001, 3, 0, 1, 0, 0, 0, 0}), On(3, 15)), 0);
}

TEST_F(PassesFilterTest, ARecordWithoutADatePassesADateFilter)
{
    TestRecord record;
    record.Text(kPropSubject, L"no date");
    EXPECT_EQ(Passes(Months(0), record), 1);
    record.Missing(kPropDate);
    EXPECT_EQ(Passes(Months(0), record), 1);
}

TEST_F(PassesFilterTest, ADateThatIsNoneLiesInNoMonth)
{
    TestRecord record;
    record.Time(kPropDate, TimeCount(UINT64_MAX));
    EXPECT_EQ(Passes(Months(0xFFF), record), 0);
    EXPECT_EQ(Passes(Range({1601, 1, 0, 1, 0, 0, 0, 0}, {9999, 12, 0, 31, 0, 0, 0, 0}), record), 0);
}

TEST_F(PassesFilterTest, OneChosenCategoryIsEnough)
{
    TestRecord record = On(1, 1);
    record.Blob(kPropCategories, {3, 11, 12, 13});
    EXPECT_EQ(Passes(Categories({12}), record), 1);
    EXPECT_EQ(Passes(Categories({11}), record), 1);
    EXPECT_EQ(Passes(Categories({99, 13}), record), 1);
    EXPECT_EQ(Passes(Categories({14}), record), 0);
    EXPECT_EQ(Passes(Categories({}), record), 0);
}

TEST_F(PassesFilterTest, WithoutCategoriesARecordFailsACategoryFilter)
{
    EXPECT_EQ(Passes(Categories({1}), On(1, 1)), 0);
    TestRecord flagged = On(1, 1);
    flagged.Missing(kPropCategories);
    EXPECT_EQ(Passes(Categories({0}), flagged), 0);
    TestRecord broken = On(1, 1);
    broken.Blob(kPropCategories, {});
    EXPECT_EQ(Passes(Categories({1}), broken), 0);
}

TEST_F(PassesFilterTest, CategoriesThatCannotBeOpenedLetNothingPass)
{
    TestRecord record;
    record.Blob(kPropCategories, {1, 7});
    ASSERT_EQ(Passes(Categories({7}), record), 1);
    Own().Journal().Close();
    const NoStore none;
    EXPECT_EQ(Passes(Categories({7}), record), 0);
    EXPECT_EQ(Passes(Months(0x1), On(1, 1)), 1) << "dates need none";
}

// Ends in seconds, hours and years that are none, too.
SYSTEMTIME RandomTime(std::mt19937& random)
{
    const auto below = [&random](unsigned limit) { return static_cast<WORD>(random() % limit); };
    SYSTEMTIME time{};
    constexpr WORD kYears[] = {0, 1600, 1601, 1999, 2000, 2001, 2004, 30'827, 30'828, 65'535};
    time.wYear = kYears[below(10)];
    time.wMonth = below(14);
    time.wDay = below(33);
    time.wHour = below(25);
    time.wMinute = below(61);
    time.wDayOfWeek = below(8);
    time.wMilliseconds = below(1001);
    return time;
}

// Near the ends of a day, of the range or anywhere.
TimeCount RandomInstant(std::mt19937& random, const FilterState& filter)
{
    const SYSTEMTIME ends[] = {filter.rangeStart, filter.rangeEnd, RandomTime(random)};
    SYSTEMTIME day = ends[random() % 3];
    day.wHour = day.wMinute = day.wSecond = day.wMilliseconds = 0;
    TimeCount instant;
    if (random() % 8 == 0 || !instant.FromSystemTime(day))
        return TimeCount(uint64_t{random()} << 32 >> random() % 33);
    constexpr uint64_t kDay = 24 * 60 * TimeCount::kUnitsPerMinute;
    const uint64_t offsets[] = {0, 1, kDay / 2, kDay - 1, kDay, ~uint64_t{0}};
    return TimeCount(instant.Units() + offsets[random() % 6]);
}

// What the range is by the comparison of two dates; it writes into both.
bool LiesInRange(TimeCount instant, const FilterState& filter)
{
    SYSTEMTIME date;
    if (!instant.ToSystemTime(&date))
        return false;
    SYSTEMTIME sameDate = date, start = filter.rangeStart, end = filter.rangeEnd;
    return CompareDates(&date, &start, kDateOnly) >= 0 && CompareDates(&sameDate, &end, kDateOnly) <= 0;
}

TEST_F(PassesFilterTest, ARangeIsWhatTheComparisonOfDatesSays)
{
    std::mt19937 random(107);
    int passing = 0;
    for (int i = 0; i < 20'000; ++i) {
        const FilterState filter = Range(RandomTime(random), RandomTime(random));
        const TimeCount instant = RandomInstant(random, filter);
        TestRecord record;
        record.Time(kPropDate, instant);
        const bool passes = LiesInRange(instant, filter);
        passing += passes;
        ASSERT_EQ(Passes(filter, record), passes ? 1 : 0) << instant.Units();
        ASSERT_EQ(FilterTest(filter).Passes(record.Properties()), passes) << "as a row: " << instant.Units();
    }
    EXPECT_GT(passing, 1000);
}

TEST_F(PassesFilterTest, CategoriesAreWhatTheBlobsStackHolds)
{
    std::mt19937 random(104);
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    for (int i = 0; i < 3000; ++i) {
        const FilterState filter = Categories({random() % 6, random() % 6, 0xFFFFFFFF});
        std::vector<DWORD> words;
        for (unsigned n = random() % 5; n; --n)
            words.push_back(random() % 9 ? random() % 6 : 0xFFFFFFFF);
        TestRecord record;
        record.Blob(kPropCategories, words);
        ZStack stack;
        categories.SetStackFromBlob(&stack, record.Properties()->val.blob, 257);
        int expected = 0;
        for (ZCategory category; stack.Pop(&category);)
            expected |= filter.categories.Find(category.id) != nullptr;
        ASSERT_EQ(Passes(filter, record), expected);
        ASSERT_EQ(FilterTest(filter).Passes(record.Properties()), expected != 0) << "as a row";
    }
}

// The same of each record, whether it is tested by itself or with all others.
TEST_F(PassesFilterTest, TheRowsOfTheJournalAreOfTheSameTest)
{
    std::mt19937 random(33);
    DbJournal& journal = Own().Journal();
    const FilterState filters[] = {Months(0x5),
                                   Range({1999, 1, 0, 1, 0, 0, 0, 0}, {2001, 2, 0, 3, 0, 0, 0, 0}),
                                   Categories({2, 4}), Categories({})};
    CeDBase::BulkScope bulk(journal);
    for (int i = 0; i < 300; ++i) {
        TestRecord record;
        if (random() % 4)
            record.Time(kPropDate, RandomInstant(random, filters[1]));
        if (random() % 4)
            record.Blob(kPropCategories,
                        {static_cast<DWORD>(random() % 4), static_cast<DWORD>(random() % 5)});
        record.Write();
    }
    ASSERT_EQ(bulk.Commit(), 1);
    for (const FilterState& filter : filters) {
        ASSERT_NE(journal.SetRowFilter(MakeRowFilter(FilterTest(filter))), 0u);
        uint32_t passing = 0;
        for (uint32_t row = 0; const CEOID id = journal.SeekRow(row); ++row) {
            WORD count = 0;
            CEPROPVAL* properties = nullptr;
            ASSERT_EQ(journal.ReadRecord(&count, nullptr, &properties), id);
            const LocalBlock<CEPROPVAL> owner(properties);
            const int passes = PassesFilter(filter, count, properties);
            passing += static_cast<uint32_t>(passes);
            EXPECT_EQ(passes, row < journal.PassingRows() ? 1 : 0) << row;
        }
        EXPECT_EQ(journal.PassingRows(), passing);
    }
}

TEST_F(PassesFilterTest, TestsOfDifferentFiltersAreToldApart)
{
    const SYSTEMTIME first{2001, 1, 0, 1, 0, 0, 0, 0}, second{2001, 1, 0, 2, 0, 0, 0, 0};
    const FilterState filters[] = {
        Months(1),      Months(2),       Range(first, first), Range(first, second), Range(second, second),
        Categories({}), Categories({1}), Categories({1, 2})};
    for (const FilterState& a : filters)
        for (const FilterState& b : filters)
            EXPECT_EQ(FilterTest(a) == FilterTest(b), &a == &b);
    EXPECT_TRUE(FilterTest(Categories({1, 2})) == FilterTest(Categories({2, 1})));
}

} // namespace
