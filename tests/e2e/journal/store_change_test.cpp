// Another program changes the journal while this one shows it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

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

constexpr int kEntries = 65'535;
constexpr int kNeighboursWrites = 500;
// Milliseconds that a key may take; a machine that has other work to do takes some of them.
constexpr ULONGLONG kMostForAKey = 3000;

bool FillStore(DbJournal& journal)
{
    CeDBase::BulkScope bulk(journal);
    wchar_t subject[] = L"One of many";
    for (int i = 0; i < kEntries; ++i) {
        CEPROPVAL values[2]{};
        values[0].propid = kPropDate;
        values[0].val.filetime = TimeCount(kNoon + static_cast<uint64_t>(i)).ToFileTime();
        values[1].propid = kPropSubject;
        values[1].val.lpwstr = subject;
        if (!journal.WriteRecord(0, 2, values))
            return false;
    }
    return bulk.Commit() == 1;
}

// Keys go on while another program writes as fast as it can, and what it has written is seen at the end.
TEST_F(StoreChange, NoKeyWaitsForABusyNeighbour)
{
    DbJournal journal;
    ASSERT_TRUE(journal.Open(nullptr));
    ASSERT_TRUE(FillStore(journal));
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(kEntries));
    ASSERT_TRUE(Click(List().LabelPoint(0)));
    ASSERT_TRUE(WaitFor([&] { return List().FocusedRow() == 0; }));
    const CEOID first = journal.IdOfRow(0);
    int row = 0;
    const auto pressDown = [&]() -> ULONGLONG {
        const ULONGLONG start = GetTickCount64();
        PressKey(VK_DOWN);
        ++row;
        EXPECT_TRUE(WaitFor([&] { return List().FocusedRow() == row; }));
        return GetTickCount64() - start;
    };
    ULONGLONG quiet = 0, most = 0, all = 0;
    for (int i = 0; i < 10; ++i)
        quiet += pressDown();
    for (int i = 1; i <= kNeighboursWrites; ++i) {
        wchar_t subject[32];
        swprintf(subject, 32, L"Written %d times", i);
        CEPROPVAL value{};
        value.propid = kPropSubject;
        value.val.lpwstr = subject;
        ASSERT_EQ(journal.WriteRecord(first, 1, &value), first);
        if (i % 50)
            continue;
        const ULONGLONG time = pressDown();
        most = std::max(most, time);
        all += time;
    }
    EXPECT_LE(most, kMostForAKey);
    printf("10 keys before: %llu ms in all; %d keys during %d writes: %llu ms in all, %llu ms at most\n",
           quiet, row - 10, kNeighboursWrites, all, most);
    // The oldest entry is the last row.
    PressKey(VK_END);
    EXPECT_TRUE(WaitFor([&] { return List().FocusedRow() == kEntries - 1; }));
    EXPECT_TRUE(WaitFor([&] { return List().Text(kEntries - 1, 1) == L"Written 500 times"; }));
}

} // namespace
