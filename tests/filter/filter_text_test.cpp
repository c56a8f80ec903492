#include "filter/filter_text.h"

#include "filter/filter_fixture.h"

namespace {

using FilterTextTest = JournalFilterTest;

TEST_F(FilterTextTest, ReadsNoneWhileNotActive)
{
    FilterState filter = OnCategories({AddCategory(L"Work")});
    filter.active = false;
    EXPECT_EQ(FilterText(filter), L"None");
    filter = OnMonths(4);
    filter.active = false;
    EXPECT_EQ(FilterText(filter), L"None");
}

TEST_F(FilterTextTest, ReadsTheNameOfOneCategoryAsItIsNow)
{
    const CEOID work = AddCategory(L"R&D");
    FilterState filter = OnCategories({work});
    filter.rangeMode = true;
    EXPECT_EQ(FilterText(filter), L"R&D");
    ASSERT_EQ(m_categories.Rename(work, L"Lab"), 1);
    EXPECT_EQ(FilterText(filter), L"Lab");
}

TEST_F(FilterTextTest, ReadsMultipleForMoreCategories)
{
    FilterState filter = OnCategories({AddCategory(L"Work"), AddCategory(L"Garden")});
    EXPECT_EQ(FilterText(filter), L"Multiple...");
    EXPECT_TRUE(filter.active);
}

TEST_F(FilterTextTest, ReadsNoneWithoutCategories)
{
    EXPECT_EQ(FilterText(OnCategories({})), L"None");
}

TEST_F(FilterTextTest, ReadsRangeForARange)
{
    FilterState filter = OnMonths(8);
    filter.rangeMode = true;
    EXPECT_EQ(FilterText(filter), L"Range...");
}

TEST_F(FilterTextTest, ReadsTheMonthOrMonths)
{
    const std::pair<DWORD, const wchar_t*> cases[] = {
        {0x1, L"January"}, {0x8, L"April"}, {0x800, L"December"}, {0xC, L"Months..."}, {0xFFF, L"Months..."}};
    for (const auto& [months, text] : cases) {
        FilterState filter = OnMonths(months);
        EXPECT_EQ(FilterText(filter), text);
        EXPECT_TRUE(filter.active);
    }
    FilterState filter = OnMonths(0);
    EXPECT_EQ(FilterText(filter), L"None");
}

} // namespace
