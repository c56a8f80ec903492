#include <algorithm>

#include "support/entry_list_fixture.h"

namespace {

using List = std::vector<CEOID>;

// A hundred entries sorted by date, the newest first: row r shows the entry 99 - r.
class EntryListRefresh : public EntryListTest {
  protected:
    EntryListRefresh()
    {
        m_ids = AddEntries(100);
        std::reverse(m_ids.begin(), m_ids.end());
        CreateList();
        Paint();
    }

    CEOID Id(int row) const { return m_ids[static_cast<size_t>(row)]; }
    bool IsVisible(int row) const
    {
        const int top = ListView_GetTopIndex(Handle());
        return row >= top && row < top + ListView_GetCountPerPage(Handle());
    }

    // So that the row is the first one that can be seen.
    void ScrollTo(int row) const
    {
        ListView_EnsureVisible(Handle(), 99, FALSE);
        ListView_EnsureVisible(Handle(), row, FALSE);
        ASSERT_EQ(ListView_GetTopIndex(Handle()), row);
    }

    List m_ids; // by row
};

TEST_F(EntryListRefresh, SelectRecordSelectsFocusesAndShows)
{
    SetFocus(m_parent.Handle());
    m_list.SelectRecord(Id(70));
    EXPECT_EQ(StateOf(70), UINT{LVIS_SELECTED | LVIS_FOCUSED});
    EXPECT_TRUE(IsVisible(70));
    EXPECT_EQ(GetFocus(), Handle());
    EXPECT_EQ(m_list.CurrentEntry(), Id(70));
    EXPECT_EQ(Selected(), List{Id(70)});
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    EXPECT_EQ(m_reports, std::vector<WPARAM>{1});
}

TEST_F(EntryListRefresh, SelectRecordShowsWhatHasTheFocusAlready)
{
    m_list.SelectRecord(Id(70));
    ListView_EnsureVisible(Handle(), 0, FALSE);
    ASSERT_FALSE(IsVisible(70));
    m_list.SelectRecord(Id(70));
    EXPECT_TRUE(IsVisible(70));
}

TEST_F(EntryListRefresh, SelectRecordReportsChangesOnly)
{
    m_list.SelectRecord(Id(3));
    m_list.SelectRecord(Id(3));
    EXPECT_EQ(m_reports.size(), 1u);
    m_list.SelectRecord(999'999);
    EXPECT_EQ(m_reports, (std::vector<WPARAM>{1, 0}));
    m_list.SelectRecord(999'999);
    EXPECT_EQ(m_reports.size(), 2u);
}

// A row index of -1 would mean every row.
TEST_F(EntryListRefresh, ARecordThatIsNotThereDeselectsNoOther)
{
    m_list.SelectRecord(Id(3));
    ClickRow(5, MK_CONTROL);
    m_list.SelectRecord(999'999);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 5}));
    EXPECT_EQ(Selected(), (List{Id(3), Id(5)}));
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    m_list.SelectRecord(0);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 5}));
}

TEST_F(EntryListRefresh, KeepsItsPlaceOnTheScreen)
{
    ScrollTo(40);
    m_list.Refresh();
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 40);
    ClickRow(42);
    m_list.Refresh();
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 40) << "what is selected is in sight";
    m_list.SelectRecord(Id(90));
    ScrollTo(40);
    m_list.Refresh();
    EXPECT_TRUE(IsVisible(90)) << "what is selected comes into sight";
}

TEST_F(EntryListRefresh, SelectedRowsOutOfSightScrollNoFurtherThanTheyNeed)
{
    ScrollTo(40);
    ClickRow(41);
    ScrollTo(60);
    m_list.Refresh();
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 41);
}

TEST_F(EntryListRefresh, AtTheEndOfFewerRowsTheLastAreShown)
{
    ScrollTo(60);
    for (int row = 50; row < 100; ++row)
        Own().Journal().DeleteRecord(Id(row));
    m_list.Refresh();
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 50 - ListView_GetCountPerPage(Handle()));
    for (int row = 0; row < 50; ++row)
        Own().Journal().DeleteRecord(Id(row));
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(EntryListRefresh, RowsInAnotherOrderBeginAtTheTop)
{
    ScrollTo(40);
    ClickHeader(0);
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 0);
}

TEST_F(EntryListRefresh, RowsUnderAnotherFilterBeginAtTheTop)
{
    ScrollTo(40);
    Own().Filter().active = true;
    Own().Filter().monthMask = 0xFFF;
    m_list.Refresh();
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 0);
    ScrollTo(40);
    Own().Filter().active = false;
    m_list.Refresh();
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 0);
}

// It has the keyboard's focus and is not selected: no command reaches it.
TEST_F(EntryListRefresh, TheRowInTheFocusedOnesPlaceGetsTheFocus)
{
    ScrollTo(40);
    ClickRow(45);
    Own().Journal().DeleteRecord(Id(45));
    m_list.ClearSelection();
    ListView_SetItemState(Handle(), 45, LVIS_FOCUSED, LVIS_FOCUSED);
    m_list.Refresh();
    EXPECT_EQ(StateOf(45), UINT{LVIS_FOCUSED});
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 40);
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(Selected(), List{});
    PressKey(VK_DOWN);
    EXPECT_EQ(SelectedRows(), std::vector<int>{46});
}

TEST_F(EntryListRefresh, SelectionFocusAndOrderSurvive)
{
    ClickRow(8);
    ClickRow(2, MK_CONTROL);
    ClickRow(5, MK_CONTROL);
    AddEntry(500, L"newest"); // moves every row down by one
    m_reports.clear();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 101);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{3, 6, 9}));
    EXPECT_EQ(Selected(), (List{Id(8), Id(2), Id(5)}));
    EXPECT_EQ(m_list.CurrentEntry(), Id(5));
    EXPECT_EQ(ListView_GetNextItem(Handle(), -1, LVNI_FOCUSED), 6);
    EXPECT_EQ(m_reports, std::vector<WPARAM>{1}); // the flag: its record was found
    m_list.Refresh();
    EXPECT_EQ(m_reports.size(), 1u);
}

TEST_F(EntryListRefresh, TheSelectionSurvivesTheEmptyingOfTheControl)
{
    ClickRow(8);
    ClickRow(2, MK_CONTROL);
    m_deselectsOnEmptying = true;
    m_reports.clear();
    m_list.Refresh();
    EXPECT_EQ(Selected(), (List{Id(8), Id(2)}));
    EXPECT_EQ(SelectedRows(), (std::vector<int>{2, 8}));
    EXPECT_EQ(m_list.CurrentEntry(), Id(2));
    EXPECT_EQ(m_reports, std::vector<WPARAM>{1});
}

TEST_F(EntryListRefresh, TheFocusIsTheOneBefore)
{
    ClickRow(8);
    ClickRow(2, MK_CONTROL);
    m_list.SetCurrentEntry(Id(8));
    m_list.Refresh();
    EXPECT_EQ(m_list.CurrentEntry(), Id(8));
    EXPECT_EQ(ListView_GetNextItem(Handle(), -1, LVNI_FOCUSED), 8);
    // None before, none after.
    m_list.SetCurrentEntry(0);
    ListView_SetItemState(Handle(), 8, 0, LVIS_FOCUSED);
    m_list.SetSelectionFlag(0);
    m_list.Refresh();
    EXPECT_EQ(LastReport(), 1); // the selected records were found
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(ListView_GetNextItem(Handle(), -1, LVNI_FOCUSED), -1);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{2, 8}));
    EXPECT_EQ(Selected(), (List{Id(8), Id(2)}));
}

TEST_F(EntryListRefresh, AFocusWithoutSelectionIsSelected)
{
    m_list.SetCurrentEntry(Id(40));
    m_list.Refresh();
    EXPECT_EQ(Selected(), List{Id(40)});
    EXPECT_EQ(SelectedRows(), std::vector<int>{40});
    EXPECT_TRUE(IsVisible(40));
    EXPECT_EQ(LastReport(), 1);
}

TEST_F(EntryListRefresh, RecordsThatAreGoneLeaveTheSelection)
{
    ClickRow(8);
    ClickRow(2, MK_CONTROL);
    Own().Journal().DeleteRecord(Id(8));
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 99);
    EXPECT_EQ(Selected(), List{Id(2)});
    EXPECT_EQ(SelectedRows(), std::vector<int>{2});
    EXPECT_EQ(m_list.CurrentEntry(), Id(2));
    m_reports.clear();
    Own().Journal().DeleteRecord(Id(2));
    m_list.Refresh();
    EXPECT_TRUE(Selected().empty());
    EXPECT_TRUE(SelectedRows().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(m_reports, std::vector<WPARAM>{0});
}

TEST_F(EntryListRefresh, AGoneRecordIsReportedThoughTheFlagWasNotSet)
{
    ClickRow(8);
    Own().Journal().DeleteRecord(Id(8));
    m_reports.clear();
    m_list.Refresh();
    EXPECT_EQ(m_reports, std::vector<WPARAM>{0});
}

TEST_F(EntryListRefresh, TheFlagIsAsTheLastRecordLeftIt)
{
    ClickRow(2);
    ClickRow(8, MK_CONTROL);
    m_list.SetCurrentEntry(0);
    m_list.SetSelectionFlag(1);
    Own().Journal().DeleteRecord(Id(8));
    m_reports.clear();
    m_list.Refresh();
    EXPECT_EQ(Selected(), List{Id(2)});
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(m_reports, std::vector<WPARAM>{0});
}

TEST_F(EntryListRefresh, AFocusThatIsGoneClearsTheFlagThoughOthersAreSelected)
{
    ClickRow(2);
    m_list.SetCurrentEntry(Id(8));
    m_list.SetSelectionFlag(1);
    Own().Journal().DeleteRecord(Id(8));
    m_reports.clear();
    m_list.Refresh();
    EXPECT_EQ(Selected(), List{Id(2)});
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(m_reports, std::vector<WPARAM>{0});
}

TEST_F(EntryListRefresh, WithNothingToSelectTheFlagStays)
{
    m_list.SetSelectionFlag(1);
    m_reports.clear();
    m_list.Refresh();
    EXPECT_EQ(m_list.SelectionFlag(), 1);
    EXPECT_TRUE(m_reports.empty());
}

TEST_F(EntryListRefresh, RecordsBehindTheRowsLeaveTheSelection)
{
    m_list.SelectRecord(Id(90));
    Own().Filter().active = true;
    Own().Filter().monthMask = 0x2; // none of them
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(LastReport(), 0);
}

TEST_F(EntryListRefresh, AClearedSelectionIsSeenCleared)
{
    m_list.SelectRecord(Id(3));
    ClickRow(5, MK_CONTROL);
    m_list.ClearSelection();
    EXPECT_TRUE(Selected().empty());
    EXPECT_TRUE(SelectedRows().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    EXPECT_EQ(LastReport(), 0);
}

TEST_F(EntryListRefresh, TheFlagIsReportedAsItIsSet)
{
    m_list.SetSelectionFlag(1);
    m_list.SetSelectionFlag(1);
    m_list.SetSelectionFlag(0);
    EXPECT_EQ(m_reports, (std::vector<WPARAM>{1, 1, 0}));
}

TEST_F(EntryListRefresh, ABackgroundRefreshTakesNoFocus)
{
    m_list.SelectRecord(Id(3));
    TestParent other;
    SetActiveWindow(other.Handle());
    SetFocus(other.Handle());
    ASSERT_EQ(GetActiveWindow(), other.Handle());
    m_list.Refresh();
    EXPECT_EQ(GetFocus(), other.Handle());
    EXPECT_EQ(m_list.CurrentEntry(), Id(3));
}

TEST_F(EntryListRefresh, TakesTheFocusWhenARecordIsSelectedAgain)
{
    ClickRow(2);
    m_list.SetCurrentEntry(0);
    SetFocus(m_parent.Handle());
    m_list.Refresh();
    EXPECT_EQ(GetFocus(), Handle());
    Own().Journal().DeleteRecord(Id(2));
    SetFocus(m_parent.Handle());
    m_list.Refresh();
    EXPECT_EQ(GetFocus(), m_parent.Handle()) << "none is left";
}

// The rows end up where selecting one record after the other would have scrolled them.
TEST_F(EntryListRefresh, ScrollsAsSelectingOneByOneWould)
{
    const std::vector<std::vector<int>> selections = {{90, 85},        {10, 90, 20}, {99},
                                                      {50, 60, 99, 0}, {5, 3},       {99, 40, 70}};
    for (const std::vector<int>& rows : selections) {
        m_list.ClearSelection();
        m_list.Refresh();
        ScrollTo(30);
        for (const int row : rows)
            ListView_EnsureVisible(Handle(), row, FALSE);
        const int wanted = ListView_GetTopIndex(Handle());
        ScrollTo(30);
        for (const int row : rows)
            m_list.Selection().Append(Id(row));
        m_list.SetCurrentEntry(Id(rows.back()));
        m_list.Refresh();
        EXPECT_EQ(ListView_GetTopIndex(Handle()), wanted) << rows[0];
        EXPECT_EQ(SelectedRows().size(), rows.size());
    }
}

TEST_F(EntryListRefresh, ARangeFromTheKeyboardStartsAtTheRestoredFocus)
{
    m_list.SelectRecord(Id(10));
    m_list.Refresh();
    PressKey(VK_DOWN, true);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{10, 11}));
    EXPECT_EQ(Selected(), (List{Id(10), Id(11)}));
}

TEST_F(EntryListRefresh, NewSortKeepsTheSelection)
{
    ClickRow(8);
    ClickRow(2, MK_CONTROL);
    ClickHeader(0);
    EXPECT_EQ(SelectedRows(), (std::vector<int>{91, 97}));
    EXPECT_EQ(Selected(), (List{Id(8), Id(2)}));
    EXPECT_EQ(m_list.CurrentEntry(), Id(2));
}

} // namespace
