#include "columns/list_columns.h"

#include <gtest/gtest.h>

#include "support/test_windows.h"

namespace {

ZColumn MakeColumn(const wchar_t* title, WORD property, DWORD flags, int width = 100)
{
    ZColumn column;
    column.Copy(title, property, flags, width);
    return column;
}

constexpr DWORD kSortableShown = kColumnSortable | kColumnShown;

TEST(HeaderColumn, OneThatCannotBeSortedByHasNoImage)
{
    const ZColumn body = MakeColumn(L"Body", 103, kColumnShown, 77);
    const LVCOLUMNW header = HeaderColumn(body, 2);
    EXPECT_EQ(header.mask, UINT{LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM});
    EXPECT_EQ(header.fmt, 0);
    EXPECT_EQ(header.cx, 77);
    EXPECT_EQ(header.iSubItem, 2);
    EXPECT_STREQ(header.pszText, L"Body");
}

TEST(HeaderColumn, ASortableOneHasItsImageOnTheRight)
{
    const ZColumn date = MakeColumn(L"Date", 101, kSortableShown, 4095);
    const LVCOLUMNW header = HeaderColumn(date, 1);
    EXPECT_EQ(header.mask, UINT{LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM | LVCF_IMAGE});
    EXPECT_EQ(header.fmt, LVCFMT_BITMAP_ON_RIGHT | LVCFMT_IMAGE);
    EXPECT_EQ(header.cx, 4095);
    EXPECT_EQ(header.iImage, 0);
    EXPECT_STREQ(header.pszText, L"Date");
}

TEST(HeaderColumn, TheSortColumnShowsItsDirection)
{
    const ZColumn up = MakeColumn(L"Date", 101, kSortableShown | kColumnSort);
    EXPECT_EQ(HeaderColumn(up, 0).iImage, up.GetSortOrder());
    EXPECT_EQ(HeaderColumn(up, 0).iImage, kHeaderImageAscending);
    const ZColumn down = MakeColumn(L"Date", 101, kSortableShown | kColumnSort | kColumnDescending);
    EXPECT_EQ(HeaderColumn(down, 0).iImage, kHeaderImageDescending);
}

TEST(HeaderColumn, PriorityIsAnIconOnlyAsTheFirst)
{
    const ZColumn priority = MakeColumn(L"Priority", 107, kSortableShown);
    EXPECT_STREQ(HeaderColumn(priority, 0).pszText, L"");
    EXPECT_EQ(HeaderColumn(priority, 0).iImage, 3);
    EXPECT_STREQ(HeaderColumn(priority, 1).pszText, L"Priority");
    EXPECT_EQ(HeaderColumn(priority, 1).iImage, 0);
    const ZColumn sorted = MakeColumn(L"PRIORITY", 107, kSortableShown | kColumnSort | kColumnDescending);
    EXPECT_STREQ(HeaderColumn(sorted, 0).pszText, L"");
    EXPECT_EQ(HeaderColumn(sorted, 0).iImage, 4);
    EXPECT_STREQ(HeaderColumn(sorted, 1).pszText, L"PRIORITY");
    EXPECT_EQ(HeaderColumn(sorted, 1).iImage, kHeaderImageDescending);
    // The title decides, and only for a column that can be sorted by.
    EXPECT_STREQ(HeaderColumn(MakeColumn(L"Priority", 107, kColumnShown), 0).pszText, L"Priority");
    EXPECT_STREQ(HeaderColumn(MakeColumn(L"Priorities", 107, kSortableShown), 0).pszText, L"Priorities");
}

ColumnSet ThreeColumns()
{
    ColumnSet set;
    ResetColumns(&set, 900);
    for (int i = 0; i < 2; ++i)
        set.columns[static_cast<size_t>(i)].Remove(kColumnSort | kColumnToggled | kColumnDescending);
    set.columns[2].Add(kColumnShown);
    set.shownCount = 3;
    return set;
}

TEST(ClickColumn, MakesTheClickedOneTheSortColumn)
{
    ColumnSet set = ThreeColumns();
    set.columns[0].Add(kColumnSort);
    set.columns[1].Add(kColumnDescending);
    EXPECT_EQ(ClickColumn(&set, 1), kHeaderImageDescending);
    EXPECT_TRUE(set.columns[1].Has(kColumnSort | kColumnDescending));
    EXPECT_FALSE(set.columns[0].Has(kColumnSort));
}

TEST(ClickColumn, FlipsTheDirectionEachTime)
{
    ColumnSet set = ThreeColumns();
    set.columns[0].Add(kColumnSort);
    EXPECT_EQ(ClickColumn(&set, 0), kHeaderImageDescending);
    EXPECT_TRUE(set.columns[0].Has(kColumnDescending));
    EXPECT_EQ(ClickColumn(&set, 0), kHeaderImageAscending);
    EXPECT_FALSE(set.columns[0].Has(kColumnDescending));
    EXPECT_EQ(ClickColumn(&set, 0), kHeaderImageDescending);
    EXPECT_TRUE(set.columns[0].Has(kColumnSort));
}

// The toggle state says which of the two is called; they leave it in different states.
TEST(ClickColumn, TheToggleStateChoosesTheCall)
{
    ColumnSet toggled = ThreeColumns();
    toggled.columns[0].Add(kColumnSort | kColumnToggled);
    ZColumn byAscending = toggled.columns[0];
    byAscending.SetAscending();
    (void)ClickColumn(&toggled, 0);
    EXPECT_EQ(toggled.columns[0].GetFlags(), byAscending.GetFlags());

    ColumnSet plain = ThreeColumns();
    plain.columns[0].Add(kColumnSort);
    ZColumn byDescending = plain.columns[0];
    byDescending.SetDecending();
    (void)ClickColumn(&plain, 0);
    EXPECT_EQ(plain.columns[0].GetFlags(), byDescending.GetFlags());
}

TEST(ClickColumn, OnlyTheFirstOtherSortColumnLosesTheMark)
{
    ColumnSet set = ThreeColumns();
    set.columns[0].Add(kColumnSort);
    set.columns[8].Add(kColumnSort);
    (void)ClickColumn(&set, 1);
    EXPECT_FALSE(set.columns[0].Has(kColumnSort));
    EXPECT_TRUE(set.columns[8].Has(kColumnSort));
}

TEST(ClickColumn, OneThatCannotBeSortedByStaysAsItIs)
{
    ColumnSet set = ThreeColumns();
    set.columns[0].Add(kColumnSort);
    const DWORD flags = set.columns[2].GetFlags();
    EXPECT_EQ(ClickColumn(&set, 2), -1);
    EXPECT_EQ(set.columns[2].GetFlags(), flags);
    EXPECT_TRUE(set.columns[0].Has(kColumnSort));
}

TEST(SortOfColumn, AsksForTheProperty)
{
    const std::pair<WORD, CEPROPID> sorts[] = {{101, 0x00650040}, {102, 0x0066001F}, {104, 0x00680041},
                                               {105, 0x0069001F}, {107, 0x006B0002}, {108, 0x006C0002},
                                               {109, 0x006D0040}, {110, 0x006E0040}, {111, 0x006F0041}};
    for (const auto& [property, id] : sorts)
        EXPECT_EQ(SortOfColumn(MakeColumn(L"", property, 0), {0x12345678, 0}).propid, id);
    for (const WORD property : {WORD{103}, WORD{106}})
        EXPECT_EQ(SortOfColumn(MakeColumn(L"", property, 0), {0x0066001F, 0}).propid, 0x0066001Fu);
}

TEST(SortOfColumn, TakesTheDirectionAndKeepsOtherFlags)
{
    const ZColumn down = MakeColumn(L"", 103, kColumnDescending);
    const ZColumn up = MakeColumn(L"", 103, 0);
    EXPECT_EQ(SortOfColumn(down, {1, 0}).dwFlags, 1u);
    EXPECT_EQ(SortOfColumn(up, {1, 1}).dwFlags, 0u);
    EXPECT_EQ(SortOfColumn(down, {1, 4}).dwFlags, 5u);
    EXPECT_EQ(SortOfColumn(up, {1, 5}).dwFlags, 4u);
}

} // namespace
