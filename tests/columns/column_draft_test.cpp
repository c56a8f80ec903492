#include "columns/column_draft.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr int kRight = 900;

std::vector<int> Properties(const ColumnSet& set)
{
    std::vector<int> properties;
    for (const ZColumn& column : set.columns)
        properties.push_back(column.Property());
    return properties;
}

std::vector<int> Shown(const ColumnDraft& draft)
{
    std::vector<int> properties = Properties(draft.Columns());
    properties.resize(static_cast<size_t>(draft.Columns().shownCount));
    return properties;
}

ColumnSet Defaults()
{
    ColumnSet set;
    ResetColumns(&set, kRight);
    return set;
}

ZColumn& Column(ColumnSet& set, WORD property)
{
    return set.columns[static_cast<size_t>(FindColumnByProperty(set, property))];
}

class ColumnDraftTest : public testing::Test {
  protected:
    int At(WORD property) const { return FindColumnByProperty(m_draft.Columns(), property); }
    bool Has(WORD property, DWORD bits) const
    {
        return m_draft.Columns().columns[static_cast<size_t>(At(property))].Has(bits);
    }

    ColumnDraft m_draft{Defaults(), kRight};
};

TEST_F(ColumnDraftTest, AShownColumnStandsBehindTheOthers)
{
    EXPECT_TRUE(m_draft.Show(At(110)));
    EXPECT_EQ(Properties(m_draft.Columns()),
              (std::vector<int>{101, 102, 110, 103, 104, 105, 106, 107, 108, 109, 111}));
    EXPECT_EQ(m_draft.Columns().shownCount, 3);
    EXPECT_TRUE(Has(110, kColumnShown));
    EXPECT_TRUE(m_draft.Show(At(103)));
    EXPECT_EQ(Shown(m_draft), (std::vector<int>{101, 102, 110, 103}));
}

TEST_F(ColumnDraftTest, OnlyWhatIsOfferedCanBeShown)
{
    for (const int position : {-1, 11, 1000, At(101), At(106)})
        EXPECT_FALSE(m_draft.Show(position)) << position;
    EXPECT_EQ(Properties(m_draft.Columns()), Properties(Defaults()));
    EXPECT_FALSE(m_draft.IsChanged());
}

TEST_F(ColumnDraftTest, AHiddenColumnStandsJustBehindTheShownOnes)
{
    m_draft.Show(At(105));
    EXPECT_TRUE(m_draft.Hide(At(101)));
    EXPECT_EQ(Properties(m_draft.Columns()),
              (std::vector<int>{102, 105, 101, 103, 104, 106, 107, 108, 109, 110, 111}));
    EXPECT_EQ(m_draft.Columns().shownCount, 2);
    EXPECT_FALSE(Has(101, kColumnShown));
}

TEST_F(ColumnDraftTest, AHiddenColumnIsNotSortedByAnyMore)
{
    EXPECT_TRUE(Has(101, kColumnSort));
    m_draft.Hide(At(101));
    EXPECT_FALSE(Has(101, kColumnSort));
    m_draft.Show(At(101));
    EXPECT_FALSE(Has(101, kColumnSort)) << "the mark does not come back";
    EXPECT_TRUE(Has(101, kColumnSortable | kColumnDescending)) << "the other marks stay";
}

TEST_F(ColumnDraftTest, TheLastColumnStays)
{
    EXPECT_TRUE(m_draft.Hide(0));
    EXPECT_FALSE(m_draft.Hide(0));
    EXPECT_EQ(Shown(m_draft), std::vector<int>{102});
}

TEST_F(ColumnDraftTest, WhatIsNotShownCannotBeHidden)
{
    for (const int position : {-1, 2, 10, 11})
        EXPECT_FALSE(m_draft.Hide(position)) << position;
    EXPECT_FALSE(m_draft.IsChanged());
}

TEST_F(ColumnDraftTest, MovesSwapNeighbours)
{
    m_draft.Show(At(105));
    EXPECT_TRUE(m_draft.MoveUp(2));
    EXPECT_EQ(Shown(m_draft), (std::vector<int>{101, 105, 102}));
    EXPECT_TRUE(m_draft.MoveDown(0));
    EXPECT_EQ(Shown(m_draft), (std::vector<int>{105, 101, 102}));
}

TEST_F(ColumnDraftTest, NothingMovesOutOfTheShownOnes)
{
    EXPECT_FALSE(m_draft.MoveUp(0));
    EXPECT_FALSE(m_draft.MoveDown(1));
    EXPECT_FALSE(m_draft.MoveUp(2));
    EXPECT_FALSE(m_draft.MoveUp(-1));
    EXPECT_FALSE(m_draft.MoveDown(-1));
    EXPECT_EQ(Properties(m_draft.Columns()), Properties(Defaults()));
    EXPECT_FALSE(m_draft.IsChanged());
}

TEST_F(ColumnDraftTest, TheMovesDependOnThePlace)
{
    m_draft.Show(At(105));
    EXPECT_EQ(m_draft.MovesOf(0), (ColumnMoves{false, true}));
    EXPECT_EQ(m_draft.MovesOf(1), (ColumnMoves{true, true}));
    EXPECT_EQ(m_draft.MovesOf(2), (ColumnMoves{true, false}));
    EXPECT_EQ(m_draft.MovesOf(3), (ColumnMoves{false, false}));
    EXPECT_EQ(m_draft.MovesOf(-1), (ColumnMoves{false, false}));
    m_draft.Hide(0);
    m_draft.Hide(0);
    EXPECT_EQ(m_draft.MovesOf(0), (ColumnMoves{false, false})) << "the only one";
}

TEST_F(ColumnDraftTest, EachChangeIsMarked)
{
    const auto changes = {
        +[](ColumnDraft& draft) { draft.Show(2); }, +[](ColumnDraft& draft) { draft.Hide(0); },
        +[](ColumnDraft& draft) { draft.MoveUp(1); }, +[](ColumnDraft& draft) { draft.MoveDown(0); }};
    for (const auto change : changes) {
        ColumnDraft draft(Defaults(), kRight);
        EXPECT_FALSE(draft.IsChanged());
        change(draft);
        EXPECT_TRUE(draft.IsChanged());
    }
}

TEST(ColumnDraft, RestoreGoesBackToWhatWasOpened)
{
    ColumnSet opened = Defaults();
    Column(opened, 102).SetWidth(77);
    MoveColumn(&opened, 0, 1);
    ColumnDraft draft(opened, kRight);
    draft.Show(4);
    draft.Hide(0);
    draft.Restore();
    EXPECT_EQ(Properties(draft.Columns()), Properties(opened));
    EXPECT_EQ(draft.Columns().columns[0].Width(), 77);
    EXPECT_EQ(draft.Columns().shownCount, 2);
    EXPECT_FALSE(draft.IsChanged());
}

TEST(ColumnDraft, TheDefaultsAreThoseOfAFirstStart)
{
    ColumnSet opened = Defaults();
    Column(opened, 102).SetWidth(77);
    MoveColumn(&opened, 0, 1);
    ColumnDraft draft(opened, kRight);
    draft.TakeDefaults();
    EXPECT_EQ(Properties(draft.Columns()), Properties(Defaults()));
    EXPECT_EQ(draft.Columns().columns[1].Width(), 600) << "two thirds of the screen";
    EXPECT_EQ(draft.Columns().shownCount, 2);
}

TEST_F(ColumnDraftTest, TheSortColumnStaysWhenThereIsOne)
{
    const ColumnSet taken = m_draft.Taken();
    EXPECT_EQ(GetSortColumn(taken), 0);
    for (size_t i = 1; i < 11; ++i)
        EXPECT_FALSE(taken.columns[i].Has(kColumnSort)) << i;
}

TEST(ColumnDraft, ASortColumnThatIsNotShownIsOneToo)
{
    ColumnSet opened = Defaults();
    Column(opened, 101).Remove(kColumnSort);
    Column(opened, 110).Add(kColumnSort);
    const ColumnSet taken = ColumnDraft(opened, kRight).Taken();
    EXPECT_EQ(GetSortColumn(taken), FindColumnByProperty(taken, 110));
}

TEST_F(ColumnDraftTest, WithoutASortColumnTheFirstSortableOneIsIt)
{
    m_draft.Show(At(103));
    m_draft.MoveUp(2);
    m_draft.MoveUp(1); // Body, which nobody sorts by, then Date and Subject
    m_draft.Hide(At(101));
    const ColumnSet taken = m_draft.Taken();
    EXPECT_EQ(taken.columns[static_cast<size_t>(GetSortColumn(taken))].Property(), 102);
}

TEST_F(ColumnDraftTest, TheFirstSortableOneMayBeHidden)
{
    m_draft.Show(At(103));
    m_draft.Hide(At(102));
    m_draft.Hide(At(101));
    const ColumnSet taken = m_draft.Taken();
    const int sort = GetSortColumn(taken);
    EXPECT_EQ(taken.columns[static_cast<size_t>(sort)].Property(), 101);
    EXPECT_GE(sort, taken.shownCount);
    EXPECT_EQ(taken.shownCount, 1);
}

TEST(ColumnDraft, WithNothingToSortByThereIsNoSortColumn)
{
    ColumnSet opened = Defaults();
    for (ZColumn& column : opened.columns)
        column.Remove(kColumnSort | kColumnSortable);
    EXPECT_EQ(GetSortColumn(ColumnDraft(opened, kRight).Taken()), -1);
}

TEST(ColumnDraft, WhatIsNeverOfferedIsNotOffered)
{
    ColumnSet set = Defaults();
    EXPECT_FALSE(IsOffered(Column(set, 101))) << "shown";
    EXPECT_FALSE(IsOffered(Column(set, 106)));
    EXPECT_TRUE(IsOffered(Column(set, 103)));
}

} // namespace
