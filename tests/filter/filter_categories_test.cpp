#include "filter/filter_categories.h"

#include "filter/filter_fixture.h"
#include "filter/filter_text.h"

namespace {

std::vector<std::wstring> OfferedNames()
{
    std::vector<std::wstring> names;
    for (const OfferedCategory& category : OfferedCategories())
        names.push_back(category.name);
    return names;
}

TEST_F(JournalFilterTest, OfTheCategoriesThoseInUseAreOfferedInTheirOrder)
{
    AddCategory(L"Work", 3);
    AddCategory(L"Idle", 0);
    const CEOID garden = AddCategory(L"Garden");
    EXPECT_EQ(OfferedNames(), (std::vector<std::wstring>{L"Garden", L"Work"}));
    EXPECT_EQ(OfferedCategories()[0].id, garden);
}

TEST_F(JournalFilterTest, OnlyTheFirstEightCategoriesAreOffered)
{
    for (const wchar_t* name : {L"i", L"h", L"g", L"f", L"e", L"d", L"c", L"b"})
        AddCategory(name);
    EXPECT_EQ(OfferedNames().size(), 8u);
    AddCategory(L"a");
    AddCategory(L"0 unused", 0);
    EXPECT_EQ(OfferedNames(), (std::vector<std::wstring>{L"a", L"b", L"c", L"d", L"e", L"f", L"g", L"h"}))
        << "those that are not in use do not count";
}

TEST_F(JournalFilterTest, AHiddenCategoryInUseIsOffered)
{
    Hide(AddCategory(L"Old"));
    EXPECT_EQ(OfferedNames(), std::vector<std::wstring>{L"Old"});
}

TEST_F(JournalFilterTest, ManyUsesCountAsUses)
{
    const CEOID id = AddCategory(L"Work", 0);
    CEPROPVAL uses{};
    uses.propid = kCategoryUses;
    uses.val.iVal = 32767;
    ASSERT_EQ(m_categories.WriteRecord(id, 1, &uses), id);
    m_categories.IncUse(id);
    EXPECT_EQ(OfferedNames().size(), 1u);
}

TEST_F(JournalFilterTest, AChosenCategoryReplacesTheFilter)
{
    FilterState filter = OnCategories({4, 5});
    filter.active = filter.categoriesMode = false;
    FilterOnCategory(7, &filter);
    EXPECT_TRUE(filter.active);
    EXPECT_TRUE(filter.categoriesMode);
    ASSERT_EQ(filter.categories.Count(), 1u);
    EXPECT_EQ(filter.categories.GetItem(0)->id, 7u);
}

TEST_F(JournalFilterTest, CategoriesThatAreGoneLeaveTheFilter)
{
    const CEOID work = AddCategory(L"Work"), garden = AddCategory(L"Garden");
    FilterState filter = OnCategories({work, garden});
    EXPECT_FALSE(BringFilterUpToDate(&filter));
    EXPECT_EQ(filter.categories.Count(), 2u);
    ASSERT_NE(m_categories.DeleteRecord(work), 0);
    EXPECT_TRUE(BringFilterUpToDate(&filter));
    EXPECT_FALSE(filter.categories.Find(work));
    EXPECT_TRUE(filter.categories.Find(garden));
    EXPECT_EQ(FilterText(filter), L"Garden");
}

TEST_F(JournalFilterTest, AFilterOnNoCategoryGoesOutOfForce)
{
    const CEOID work = AddCategory(L"Work");
    FilterState filter = OnCategories({work});
    ASSERT_NE(m_categories.DeleteRecord(work), 0);
    EXPECT_TRUE(BringFilterUpToDate(&filter));
    EXPECT_FALSE(filter.active);
    filter = OnCategories({});
    filter.categoriesMode = false;
    EXPECT_FALSE(BringFilterUpToDate(&filter));
    EXPECT_TRUE(filter.active) << "on dates";
}

TEST_F(JournalFilterTest, AHiddenCategoryStaysInTheFilter)
{
    const CEOID work = AddCategory(L"Work");
    FilterState filter = OnCategories({work});
    Hide(work);
    EXPECT_FALSE(BringFilterUpToDate(&filter));
    EXPECT_EQ(FilterText(filter), L"Work");
}

class NoCategories : public testing::Test {};

TEST_F(NoCategories, CanBeOpenedSoNoneAreOfferedOrDropped)
{
    const NoStore none;
    EXPECT_TRUE(OfferedCategories().empty());
    EXPECT_EQ(CategoryName(1), std::nullopt);
    FilterState filter;
    filter.categories.Push({1, 0});
    EXPECT_FALSE(BringFilterUpToDate(&filter));
    EXPECT_EQ(filter.categories.Count(), 1u);
}

} // namespace
