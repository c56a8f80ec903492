#include "list/selection_tracker.h"

#include <gtest/gtest.h>
#include <commctrl.h>

#include <vector>

namespace {

constexpr UINT kSelected = LVIS_SELECTED;
constexpr UINT kFocused = LVIS_FOCUSED;
constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;

std::vector<CEOID> Ids(const SelectionTracker& tracker)
{
    return {tracker.Selection().InOrder().begin(), tracker.Selection().InOrder().end()};
}

using List = std::vector<CEOID>;

TEST(SelectionTracker, AClickSelectsWithoutTheFlag)
{
    SelectionTracker tracker;
    EXPECT_TRUE(tracker.OnItemChanged(7, 0, kBoth));
    EXPECT_EQ(Ids(tracker), List{7});
    EXPECT_EQ(tracker.CurrentEntry(), 7u);
    EXPECT_EQ(tracker.Flag(), 0);
}

TEST(SelectionTracker, KeepsTheOrderOfSelecting)
{
    SelectionTracker tracker;
    for (const CEOID id : {5u, 9u, 2u})
        EXPECT_TRUE(tracker.OnItemChanged(id, 0, kSelected));
    // Gaining or losing the focus, or being told again, moves nothing.
    EXPECT_TRUE(tracker.OnItemChanged(5, kSelected, kBoth));
    EXPECT_TRUE(tracker.OnItemChanged(5, kBoth, kSelected));
    EXPECT_TRUE(tracker.OnItemChanged(9, 0, kSelected));
    EXPECT_EQ(Ids(tracker), (List{5, 9, 2}));
}

TEST(SelectionTracker, TheFocusIsTheCurrentEntry)
{
    SelectionTracker tracker;
    EXPECT_FALSE(tracker.OnItemChanged(5, 0, kFocused));
    EXPECT_EQ(tracker.CurrentEntry(), 5u);
    EXPECT_FALSE(tracker.OnItemChanged(5, kFocused, 0));
    EXPECT_EQ(tracker.CurrentEntry(), 0u);
    // A row that was focused all along is the current entry again, also after the selection was emptied.
    EXPECT_TRUE(tracker.OnItemChanged(6, kFocused, kBoth));
    EXPECT_EQ(tracker.CurrentEntry(), 6u);
}

TEST(SelectionTracker, DeselectingTheLastOneClearsTheFlag)
{
    SelectionTracker tracker;
    (void)tracker.OnItemChanged(1, 0, kSelected);
    (void)tracker.OnItemChanged(2, 0, kBoth);
    tracker.SetFlag(1);
    EXPECT_FALSE(tracker.OnItemChanged(1, kSelected, 0));
    EXPECT_EQ(tracker.Flag(), 1);
    EXPECT_EQ(tracker.CurrentEntry(), 2u);
    EXPECT_TRUE(tracker.OnItemChanged(2, kBoth, kFocused));
    EXPECT_EQ(tracker.CurrentEntry(), 2u); // it has the focus still
    EXPECT_EQ(tracker.Flag(), 0);
    EXPECT_TRUE(tracker.Selection().IsEmpty());
}

TEST(SelectionTracker, DeselectingTheCurrentEntryLeavesNone)
{
    SelectionTracker tracker;
    (void)tracker.OnItemChanged(1, 0, kSelected);
    tracker.SetCurrentEntry(1);
    EXPECT_TRUE(tracker.OnItemChanged(1, kSelected, 0));
    EXPECT_EQ(tracker.CurrentEntry(), 0u);
}

TEST(SelectionTracker, ARowWithoutARecordSelectsNothing)
{
    SelectionTracker tracker;
    EXPECT_FALSE(tracker.OnItemChanged(0, 0, kBoth));
    EXPECT_TRUE(tracker.Selection().IsEmpty());
    EXPECT_EQ(tracker.CurrentEntry(), 0u);
}

TEST(SelectionTracker, DeselectingAllRowsEmptiesEverything)
{
    SelectionTracker tracker;
    (void)tracker.OnItemChanged(1, 0, kSelected);
    (void)tracker.OnItemChanged(2, 0, kBoth);
    tracker.SetFlag(1);
    EXPECT_FALSE(tracker.OnAllItemsChanged(0, kSelected));
    EXPECT_EQ(Ids(tracker), (List{1, 2}));
    EXPECT_TRUE(tracker.OnAllItemsChanged(kSelected, 0));
    EXPECT_TRUE(tracker.Selection().IsEmpty());
    EXPECT_EQ(tracker.CurrentEntry(), 0u);
    EXPECT_EQ(tracker.Flag(), 0);
}

TEST(SelectionTracker, TheProgramsOwnSelectingSetsTheFlag)
{
    SelectionTracker tracker;
    EXPECT_TRUE(tracker.OnRecordSelected(4));
    EXPECT_EQ(tracker.Flag(), 1);
    EXPECT_EQ(tracker.CurrentEntry(), 4u);
    EXPECT_EQ(Ids(tracker), List{4});
    EXPECT_FALSE(tracker.OnRecordSelected(4)); // nothing new to tell
}

TEST(SelectionTracker, AMissingRecordClearsTheFlagAndTheFocus)
{
    SelectionTracker tracker;
    (void)tracker.OnRecordSelected(4);
    (void)tracker.OnRecordSelected(5);
    EXPECT_TRUE(tracker.OnRecordMissing(4));
    EXPECT_EQ(tracker.Flag(), 0);
    EXPECT_EQ(tracker.CurrentEntry(), 0u);
    EXPECT_EQ(Ids(tracker), List{5});
    EXPECT_FALSE(tracker.OnRecordMissing(99));
}

} // namespace
