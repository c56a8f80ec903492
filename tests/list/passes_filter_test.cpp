#include "list/passes_filter.h"

#include "list/journal_fixture.h"

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

} // namespace
