// Another program changes the journal while this one shows it.
#include <gtest/gtest.h>

#include "data/journal_entry.h"
#include "e2e/journal/journal_window.h"

namespace {

using StoreChange = JournalWindowTest;

TEST_F(StoreChange, EntriesOfAnotherProgramShowAtOnce)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(0));
    const CEOID id = AddEntry(L"From elsewhere");
    ASSERT_NE(id, 0u);
    ASSERT_TRUE(ShowsRows(1));
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 1) == L"From elsewhere"; }));
    DbJournal journal;
    ASSERT_TRUE(journal.Open(nullptr));
    EXPECT_EQ(journal.DeleteRecord(id), 1);
    EXPECT_TRUE(ShowsRows(0));
}

TEST_F(StoreChange, TheSelectionOutlivesIt)
{
    ASSERT_NE(AddEntry(L"One", kNoon), 0u);
    ASSERT_NE(AddEntry(L"Two", kNoon + 1), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(2));
    ASSERT_TRUE(Click(List().LabelPoint(1)));
    ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{1}; }));
    ASSERT_TRUE(WaitFor([&] { return List().Text(1, 1) == L"One"; }));
    ASSERT_NE(AddEntry(L"Newest", kNoon + 2), 0u);
    ASSERT_TRUE(ShowsRows(3));
    EXPECT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{2}; }));
    EXPECT_TRUE(WaitFor([&] { return List().Text(2, 1) == L"One"; }));
}

} // namespace
