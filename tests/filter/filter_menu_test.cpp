#include "filter/filter_menu.h"

#include "filter/filter_fixture.h"
#include "res/resource.h"
#include "support/unreadable_table.h"

namespace {

struct Item {
    UINT id;
    std::wstring text;
    bool isChecked;
    bool operator==(const Item&) const = default;
};

constexpr UINT kSeparator = 0;

std::vector<Item> ItemsOf(HMENU menu)
{
    std::vector<Item> items;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const UINT position = static_cast<UINT>(i);
        wchar_t text[130] = L"";
        GetMenuStringW(menu, position, text, 130, MF_BYPOSITION);
        const UINT state = GetMenuState(menu, position, MF_BYPOSITION);
        EXPECT_TRUE((state & MF_SEPARATOR) || !(state & (MF_GRAYED | MF_DISABLED))) << i;
        items.push_back(
            {state & MF_SEPARATOR ? kSeparator : GetMenuItemID(menu, i), text, (state & MF_CHECKED) != 0});
    }
    return items;
}

const std::vector<Item> kCommands = {{103, L"<New Category>", false},
                                     {118, L"Filter On Categories", false},
                                     {120, L"Filter On Months", false},
                                     {kSeparator, L"", false},
                                     {121, L"Clear Filter", false}};

using FilterMenuTest = JournalFilterTest;

TEST_F(FilterMenuTest, SaysThatCategoriesCannotBeRead)
{
    AddCategory(L"Work", 1);
    const UnreadableTable unreadable(m_store.Path(), "categories");
    const FilterMenu menu({});
    wchar_t text[60] = L"";
    GetMenuStringW(menu.Handle(), 0, text, 60, MF_BYPOSITION);
    EXPECT_STREQ(text, L"(Not all categories can be read)");
    EXPECT_TRUE(GetMenuState(menu.Handle(), 0, MF_BYPOSITION) & MF_GRAYED);
    EXPECT_TRUE(GetMenuState(menu.Handle(), 1, MF_BYPOSITION) & MF_SEPARATOR);
    EXPECT_EQ(GetMenuItemID(menu.Handle(), 2), static_cast<UINT>(CMD_CATEGORIES_LIST));
}

TEST_F(FilterMenuTest, HasItsCommandsAlone)
{
    AddCategory(L"Idle", 0);
    const FilterMenu menu({});
    EXPECT_EQ(ItemsOf(menu.Handle()), kCommands);
    EXPECT_FALSE(menu.ListsCategories());
}

TEST_F(FilterMenuTest, HasItsCommandsWhereCategoriesCannotBeOpened)
{
    AddCategory(L"Work");
    m_categories.Close();
    Own().Journal().Close();
    const NoStore none;
    const FilterMenu menu({});
    EXPECT_EQ(ItemsOf(menu.Handle()), kCommands);
    EXPECT_FALSE(menu.ListsCategories());
}

TEST_F(FilterMenuTest, HasTheCategoriesInFront)
{
    const CEOID work = AddCategory(L"Work");
    const CEOID garden = AddCategory(L"Garden");
    AddCategory(L"Home");
    const FilterMenu menu(OnCategories({work, garden}));
    std::vector<Item> wanted = {
        {150, L"Garden", true}, {151, L"Home", false}, {152, L"Work", true}, {kSeparator, L"", false}};
    wanted.insert(wanted.end(), kCommands.begin(), kCommands.end());
    EXPECT_EQ(ItemsOf(menu.Handle()), wanted);
    EXPECT_TRUE(menu.ListsCategories());
}

TEST_F(FilterMenuTest, ChecksNoCategoryOfAFilterOnDates)
{
    FilterState filter = OnCategories({AddCategory(L"Work")});
    filter.categoriesMode = false;
    EXPECT_FALSE(ItemsOf(FilterMenu(filter).Handle())[0].isChecked);
}

TEST_F(FilterMenuTest, ItemsKnowTheirCategories)
{
    AddCategory(L"Work");
    const CEOID garden = AddCategory(L"Garden");
    const FilterMenu menu({});
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_DATA;
    ASSERT_TRUE(GetMenuItemInfoW(menu.Handle(), 150, FALSE, &item));
    EXPECT_EQ(item.dwItemData, garden);
}

TEST_F(FilterMenuTest, ShowsNamesWhole)
{
    AddCategory(L"R&D");
    AddCategory(L"A\tB");
    const std::vector<Item> items = ItemsOf(FilterMenu({}).Handle());
    EXPECT_EQ(items[0].text, L"A B");
    EXPECT_EQ(items[1].text, L"R&&D");
}

TEST_F(FilterMenuTest, AChosenCategoryIsTheFilterAndStoresNothing)
{
    AddCategory(L"Garden");
    const CEOID work = AddCategory(L"Work");
    FilterState filter = OnMonths(3);
    FilterMenu({}).Choose(151, &filter);
    EXPECT_TRUE(filter.active);
    EXPECT_TRUE(filter.categoriesMode);
    EXPECT_EQ(filter.categories.Count(), 1u);
    EXPECT_TRUE(filter.categories.Find(work));
    for (const wchar_t* name : {L"Active", L"fRange", L"fMonths", L"mLStart", L"mHStart", L"mLEnd", L"mHEnd"})
        EXPECT_EQ(Own().GetNumber(L"Filter", name, 0xDEAD), 0xDEADu);
}

TEST_F(FilterMenuTest, AnyOtherCommandLeavesTheFilter)
{
    AddCategory(L"Garden");
    FilterState filter = OnMonths(3);
    for (const UINT command : {0u, 103u, 118u, 120u, 121u, 149u, 151u, 152u, 160u})
        FilterMenu({}).Choose(command, &filter);
    EXPECT_TRUE(filter.active);
    EXPECT_FALSE(filter.categoriesMode);
    EXPECT_EQ(filter.monthMask, 3u);
    EXPECT_TRUE(filter.categories.IsEmpty());
}

} // namespace
