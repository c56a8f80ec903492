#include <algorithm>
#include <set>

#include "support/entry_list_fixture.h"

namespace {

using List = std::vector<CEOID>;

// Twenty entries sorted by date, the newest first: row r shows the entry 19 - r.
class EntryListSelection : public EntryListTest {
  protected:
    EntryListSelection()
    {
        m_ids = AddEntries(20);
        std::reverse(m_ids.begin(), m_ids.end());
        CreateList();
        Paint();
    }

    // What is seen selected is what the commands reach.
    void ExpectSelectionAsSeen()
    {
        std::multiset<CEOID> seen;
        for (const int row : SelectedRows())
            seen.insert(m_ids[static_cast<size_t>(row)]);
        const List selected = Selected();
        EXPECT_EQ(std::multiset<CEOID>(selected.begin(), selected.end()), seen);
    }

    CEOID Id(int row) const { return m_ids[static_cast<size_t>(row)]; }

    List m_ids; // by row
};

// A click on one of several selected rows: some systems tell of it by this alone, and the row stays selected.
TEST_F(EntryListSelection, WhatTheControlStillShowsAfterAllWereDeselectedIsSelected)
{
    ClickRow(1);
    NMLISTVIEW change{};
    change.hdr = {Handle(), static_cast<UINT_PTR>(GetDlgCtrlID(Handle())),
                  static_cast<UINT>(LVN_ITEMCHANGED)};
    change.iItem = -1;
    change.uChanged = LVIF_STATE;
    change.uOldState = LVIS_SELECTED;
    SendMessageW(m_parent.Handle(), WM_NOTIFY, change.hdr.idFrom, reinterpret_cast<LPARAM>(&change));
    ASSERT_EQ(SelectedRows(), std::vector{1});
    EXPECT_EQ(Selected(), List{Id(1)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(1));
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    change.uOldState = LVIS_FOCUSED;
    SendMessageW(m_parent.Handle(), WM_NOTIFY, change.hdr.idFrom, reinterpret_cast<LPARAM>(&change));
    EXPECT_EQ(Selected(), List{Id(1)});
}

// As programs that help to read the screen do.
TEST_F(EntryListSelection, AllThatAnotherProgramSelectsIsSelected)
{
    ClickRow(3);
    ListView_SetItemState(Handle(), -1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(SelectedRows().size(), 20u);
    ExpectSelectionAsSeen();
    EXPECT_EQ(Selected().front(), Id(3)) << "the one that was selected before";
    ListView_SetItemState(Handle(), -1, 0, LVIS_SELECTED);
    ExpectSelectionAsSeen();
}

TEST_F(EntryListSelection, AClickSelectsTheRowWithoutTheFlag)
{
    ClickRow(3);
    EXPECT_EQ(Selected(), List{Id(3)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(3));
    EXPECT_EQ(LastReport(), 0);
    EXPECT_EQ(m_list.SelectionFlag(), 0);
    ClickRow(5);
    EXPECT_EQ(Selected(), List{Id(5)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(5));
    ExpectSelectionAsSeen();
}

// Though the journal has other rows by then, of which the list has not been told.
TEST_F(EntryListSelection, WhatIsSeenIsWhatIsSelected)
{
    AddEntry(500, L"newest");
    ClickRow(3);
    EXPECT_EQ(Selected(), List{Id(3)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(3));
}

TEST_F(EntryListSelection, ControlClicksKeepTheOrderOfSelecting)
{
    ClickRow(4);
    ClickRow(8, MK_CONTROL);
    ClickRow(2, MK_CONTROL);
    EXPECT_EQ(Selected(), (List{Id(4), Id(8), Id(2)}));
    ExpectSelectionAsSeen();
    ClickRow(8, MK_CONTROL);
    EXPECT_EQ(Selected(), (List{Id(4), Id(2)}));
    ExpectSelectionAsSeen();
    ClickRow(8, MK_CONTROL);
    EXPECT_EQ(Selected(), (List{Id(4), Id(2), Id(8)}));
    ExpectSelectionAsSeen();
}

TEST_F(EntryListSelection, ShiftClickSelectsTheRange)
{
    ClickRow(2);
    ClickRow(6, MK_SHIFT);
    EXPECT_EQ(Selected(), (List{Id(2), Id(3), Id(4), Id(5), Id(6)}));
    EXPECT_EQ(m_list.CurrentEntry(), Id(6));
    ExpectSelectionAsSeen();
    ClickRow(1, MK_SHIFT);
    EXPECT_EQ(Selected(), (List{Id(1), Id(2)}));
    ExpectSelectionAsSeen();
}

TEST_F(EntryListSelection, ARangeMayBeAddedToOthers)
{
    ClickRow(1);
    ClickRow(5, MK_CONTROL);
    ClickRow(9, MK_CONTROL | MK_SHIFT);
    ExpectSelectionAsSeen();
    EXPECT_GE(Selected().size(), 5u);
}

// Told of by hand: the control has deselected the others before it tells of a range.
class RangeChange : public EntryListSelection {
  protected:
    void Tell(int from, int to, UINT newState)
    {
        NMLVODSTATECHANGE change{};
        change.hdr = {Handle(), 0, static_cast<UINT>(LVN_ODSTATECHANGED)};
        change.iFrom = from;
        change.iTo = to;
        change.uNewState = newState;
        m_reports.clear();
        m_list.OnNotify(&change.hdr);
        EXPECT_EQ(m_reports.size(), 1u) << "reported whatever it was";
    }
};

TEST_F(RangeChange, IsTheWholeSelection)
{
    m_list.Selection().Append(Id(15));
    Tell(2, 4, LVIS_SELECTED);
    EXPECT_EQ(Selected(), (List{Id(2), Id(3), Id(4)}));
}

TEST_F(RangeChange, MayBeOfOneRow)
{
    m_list.Selection().Append(Id(15));
    Tell(3, 3, LVIS_SELECTED);
    EXPECT_EQ(Selected(), List{Id(3)});
}

TEST_F(RangeChange, OfRowsThatAreNotSelectedEmptiesIt)
{
    m_list.Selection().Append(Id(15));
    Tell(2, 4, 0);
    EXPECT_TRUE(Selected().empty());
}

TEST_F(RangeChange, TurnedOverEmptiesIt)
{
    m_list.Selection().Append(Id(15));
    Tell(4, 2, LVIS_SELECTED);
    EXPECT_TRUE(Selected().empty());
}

TEST_F(RangeChange, BeyondTheRowsTakesThoseThatAreThere)
{
    Tell(-5, 1, LVIS_SELECTED);
    EXPECT_EQ(Selected(), (List{Id(0), Id(1)}));
    Tell(18, INT_MAX, LVIS_SELECTED);
    EXPECT_EQ(Selected(), (List{Id(18), Id(19)}));
}

TEST_F(RangeChange, LeavesTheFlagAndTheCurrentEntry)
{
    m_list.SelectRecord(Id(7));
    Tell(2, 4, LVIS_SELECTED);
    EXPECT_EQ(m_list.CurrentEntry(), Id(7));
    EXPECT_EQ(LastReport(), 1);
    Tell(4, 2, LVIS_SELECTED);
    EXPECT_EQ(m_list.CurrentEntry(), Id(7));
    EXPECT_EQ(LastReport(), 1);
}

TEST_F(EntryListSelection, AClickDropsASelectionOfSeveral)
{
    ClickRow(2);
    ClickRow(6, MK_SHIFT);
    ClickRow(4);
    EXPECT_EQ(Selected(), List{Id(4)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(4));
    ExpectSelectionAsSeen();
    ClickRow(2, MK_CONTROL);
    ClickRow(2);
    EXPECT_EQ(Selected(), List{Id(2)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(2));
    ExpectSelectionAsSeen();
}

TEST_F(EntryListSelection, ArrowKeysMoveTheSelection)
{
    ClickRow(2);
    PressKey(VK_DOWN);
    EXPECT_EQ(Selected(), List{Id(3)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(3));
    PressKey(VK_DOWN, true);
    PressKey(VK_DOWN, true);
    EXPECT_EQ(Selected(), (List{Id(3), Id(4), Id(5)}));
    ExpectSelectionAsSeen();
    PressKey(VK_UP);
    EXPECT_EQ(Selected(), List{Id(4)});
    ExpectSelectionAsSeen();
    PressKey(VK_END);
    EXPECT_EQ(Selected(), List{Id(19)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(19));
    PressKey(VK_HOME);
    EXPECT_EQ(Selected(), List{Id(0)});
    EXPECT_EQ(m_list.SelectionFlag(), 0);
}

TEST_F(EntryListSelection, TheFocusMovesWithoutSelecting)
{
    ClickRow(2);
    PressKey(VK_DOWN, false, true);
    EXPECT_EQ(Selected(), List{Id(2)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(3));
    ExpectSelectionAsSeen();
}

TEST_F(EntryListSelection, DoubleClickEdits)
{
    DoubleClickRow(3);
    EXPECT_EQ(m_commands, std::vector<WPARAM>{101});
    EXPECT_EQ(Selected(), List{Id(3)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(3));
    ExpectSelectionAsSeen();
    ClickRow(5, MK_CONTROL);
    ClickRow(6, MK_CONTROL);
    DoubleClickRow(5);
    EXPECT_EQ(Selected(), List{Id(5)});
    EXPECT_EQ(m_list.CurrentEntry(), Id(5));
    ExpectSelectionAsSeen();
}

} // namespace
