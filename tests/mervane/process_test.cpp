// Two programs on one store.
#include <gtest/gtest.h>

#include <random>

#include "change_listener.h"
#include "peer_process.h"
#include "records.h"
#include "support/test_store.h"
#include "support/test_windows.h"

namespace {

class TwoPrograms : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_journal.Open(m_listener.Window()), 1); }
    // As long as a change may stay unexplained: the timer's periods, without the time.
    static void LetPeriodsPass()
    {
        HWND hub = FindWindowExW(HWND_MESSAGE, nullptr, L"MervaneStore", nullptr);
        ASSERT_NE(hub, nullptr);
        for (int i = 0; i < 3; ++i)
            SendMessageW(hub, WM_TIMER, 1, 0);
    }

    TestStore m_store;
    Listener m_listener;
    DbJournal m_journal;
};

TEST_F(TwoPrograms, HearOfEachOthersChanges)
{
    const CEOID id = AddEntry(m_journal, L"mine");
    ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeCreated, id + 1}}));
    EXPECT_EQ(m_journal.RecordCount(), 2u);
    ASSERT_EQ(PeerProcess::Run(L"change " + std::to_wstring(id) + L" other"), 0u);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeModified, id}}));
    EXPECT_STREQ(m_journal.GetSubject(id), L"other");
    ASSERT_EQ(PeerProcess::Run(L"delete " + std::to_wstring(id)), 0u);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeDeleted, id}}));
    EXPECT_EQ(m_journal.SeekRecord(id), 0u);
}

TEST_F(TwoPrograms, HearOfAChangeOnceOnly)
{
    // Whether it is noticed by the message that tells of it or by a read before that.
    for (const bool readsFirst : {false, true}) {
        ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
        if (readsFirst) {
            EXPECT_EQ(m_journal.RecordCount(), 2u);
        }
        EXPECT_EQ(m_listener.Hear(1).size(), 1u);
        LetPeriodsPass();
        EXPECT_EQ(m_listener.HeardSoFar(), Heard{});
    }
}

TEST_F(TwoPrograms, ReadOneStateWhileTheOtherSaves)
{
    PeerProcess saver(L"save");
    DWORD told = 0;
    for (int round = 0; round < 20; ++round) {
        told = saver.Hear().value_or(0);
        ASSERT_NE(told, 0u);
        const CeDBase::ReadScope scope(m_journal);
        const DWORD count = m_journal.RecordCount();
        EXPECT_GE(count, told) << "what the other program was told is saved is there";
        EXPECT_EQ(Rows(m_journal).size(), count);
        ASSERT_EQ(m_journal.SeekRecord(count), count);
        EXPECT_EQ(Received(m_journal).Text(kBody)->size(), 3000 + count % 20'000);
        EXPECT_EQ(m_journal.SeekRecord(count + 1), 0u);
    }
}

TEST_F(TwoPrograms, GiveEachIdentifierOnce)
{
    const CEOID first = AddEntry(m_journal, L"mine");
    ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    EXPECT_EQ(m_journal.DeleteRecord(first + 1), 1);
    ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    ASSERT_EQ(PeerProcess::Run(L"delete " + std::to_wstring(first + 2)), 0u);
    EXPECT_EQ(AddEntry(m_journal, L"mine"), first + 3);
}

TEST_F(TwoPrograms, AnnounceBulkWorkAsAWhole)
{
    ASSERT_EQ(PeerProcess::Run(L"bulk 5"), 0u);
    EXPECT_EQ(m_listener.Hear(2), (Heard{{kChangeWorkBegins, 0}, {kChangeWorkEnded, 0}}));
    EXPECT_EQ(m_journal.RecordCount(), 5u);
}

TEST_F(TwoPrograms, TellOfASingleWriteInABulkAsOfAnyOther)
{
    ASSERT_EQ(PeerProcess::Run(L"bulk 0"), 0u);
    ASSERT_EQ(PeerProcess::Run(L"bulk 1"), 0u);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeCreated, 1}}));
    EXPECT_EQ(m_listener.HeardSoFar(), Heard{});
    EXPECT_EQ(m_journal.RecordCount(), 1u);
}

TEST_F(TwoPrograms, TellTheJournalWhenNamesChange)
{
    DbCategories categories;
    Listener own;
    ASSERT_EQ(categories.Open(kCategoriesKey, own.Window()), 1);
    ASSERT_EQ(PeerProcess::Run(L"category Work"), 0u);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeWorkEnded, 0}}));
    EXPECT_EQ(own.Hear(1), (Heard{{kChangeCreated, 1}}));
    EXPECT_EQ(JoinedNames(categories, {1, 1}, L','), L"Work");
    // A use count is not shown with the entries.
    ASSERT_EQ(PeerProcess::Run(L"use 1"), 0u);
    EXPECT_EQ(own.Hear(1), (Heard{{kChangeModified, 1}}));
    EXPECT_EQ(m_listener.HeardSoFar(), Heard{});
    ASSERT_EQ(PeerProcess::Run(L"bulk 2"), 0u);
    EXPECT_EQ(own.Hear(2), (Heard{{kChangeWorkBegins, 0}, {kChangeWorkEnded, 0}}));
    EXPECT_EQ(m_listener.Hear(2).size(), 2u);
    // The journal's changes are none of the categories'.
    ASSERT_EQ(PeerProcess::Run(L"write x"), 0u);
    EXPECT_EQ(m_listener.Hear(1).size(), 1u);
    EXPECT_EQ(own.HeardSoFar(), Heard{});
}

// A save of an entry counts its categories' uses in the same transaction.
TEST_F(TwoPrograms, TellOfASaveThatCountsUsesAsOfOneChange)
{
    DbCategories categories;
    Listener own;
    ASSERT_EQ(categories.Open(kCategoriesKey, own.Window()), 1);
    ASSERT_NE(AddCategory(categories, L"a"), 0u);
    ASSERT_NE(AddCategory(categories, L"b"), 0u);
    categories.SetSort({kCategoryUses, CEDB_SORT_DESCENDING}, 1);
    ASSERT_EQ(Rows(categories), (std::vector<CEOID>{1, 2}));
    for (const bool readsFirst : {false, true}) {
        const DWORD count = m_journal.RecordCount();
        ASSERT_EQ(PeerProcess::Run(L"file 2 1"), 0u);
        if (readsFirst) {
            EXPECT_EQ(m_journal.RecordCount(), count + 1);
        }
        EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeCreated, static_cast<LPARAM>(count + 1)}}));
        EXPECT_EQ(own.Hear(1), (Heard{{kChangeWorkEnded, 0}}));
        LetPeriodsPass();
        EXPECT_EQ(m_listener.HeardSoFar(), Heard{});
        EXPECT_EQ(own.HeardSoFar(), Heard{});
        EXPECT_EQ(Rows(categories), (std::vector<CEOID>{2, 1})) << "the counts are read again";
    }
    ASSERT_EQ(PeerProcess::Run(L"file 2 2"), 0u);
    EXPECT_EQ(m_listener.Hear(2), (Heard{{kChangeWorkBegins, 0}, {kChangeWorkEnded, 0}}));
}

TEST_F(TwoPrograms, HearNothingOfTheirOwnChanges)
{
    const CEOID id = AddEntry(m_journal, L"a");
    ASSERT_EQ(Sent().Text(kSubject, L"b").Write(m_journal, id), id);
    EXPECT_EQ(m_journal.DeleteRecord(id), 1);
    CeDBase::BulkScope bulk(m_journal);
    ASSERT_NE(AddEntry(m_journal, L"c"), 0u);
    ASSERT_EQ(bulk.Commit(), 1);
    // What another program does comes behind, and alone.
    ASSERT_EQ(PeerProcess::Run(L"write x"), 0u);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeCreated, id + 2}}));
}

TEST_F(TwoPrograms, HearNothingOnceClosedOrOfAnotherStore)
{
    DbJournal other;
    Listener otherListener;
    ASSERT_EQ(other.Open(otherListener.Window()), 1);
    m_journal.Close();
    ASSERT_EQ(PeerProcess::Run(L"write x"), 0u);
    EXPECT_EQ(otherListener.Hear(1).size(), 1u);
    EXPECT_EQ(m_listener.HeardSoFar(), Heard{});
    const TestStore elsewhere;
    ASSERT_EQ(PeerProcess::Run(L"write y"), 0u);
    DbJournal second;
    ASSERT_EQ(second.Open(m_listener.Window()), 1);
    ASSERT_EQ(PeerProcess::Run(L"write z"), 0u);
    EXPECT_EQ(m_listener.Hear(1).size(), 1u);
    EXPECT_EQ(otherListener.HeardSoFar(), Heard{});
}

TEST_F(TwoPrograms, HearInTheEndOfWhatAnotherToolChanges)
{
    ASSERT_TRUE(RawStore(m_store.Path()).Run("INSERT INTO journal(subject) VALUES('by hand')"));
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeWorkEnded, 0}}));
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    // Also when a read has noticed it first.
    ASSERT_TRUE(RawStore(m_store.Path()).Run("DELETE FROM journal"));
    EXPECT_EQ(m_journal.RecordCount(), 0u);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeWorkEnded, 0}}));
}

TEST_F(TwoPrograms, TakeNoNonsenseFromOtherWindows)
{
    HWND peer = FindWindowExW(HWND_MESSAGE, nullptr, L"MervaneStore", nullptr);
    ASSERT_NE(peer, nullptr);
    const UINT message = RegisterWindowMessageW(L"MervaneStoreChange");
    for (const WPARAM packed : {WPARAM{0}, WPARAM{3}, WPARAM{16}, WPARAM{0x0302}, WPARAM{0xFF02}, ~WPARAM{0}})
        SendMessageW(peer, message, packed, 7);
    EXPECT_EQ(m_listener.HeardSoFar(), Heard{});
    SendMessageW(peer, message, kChangeDeleted, 7);
    EXPECT_EQ(m_listener.Hear(1), (Heard{{kChangeDeleted, 7}}));
}

TEST_F(TwoPrograms, WaitForALockAndThenGiveUp)
{
    const CEOID id = AddEntry(m_journal, L"before");
    PeerProcess holder(L"hold");
    ASSERT_EQ(holder.Hear(), 1u);
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(Sent().Text(kSubject, L"after").Write(m_journal, id), 0u);
    EXPECT_GE(GetTickCount64() - start, 2000u);
    // Reading goes on meanwhile.
    EXPECT_STREQ(m_journal.GetSubject(id), L"before");
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    holder.Kill();
    EXPECT_EQ(Sent().Text(kSubject, L"after").Write(m_journal, id), id);
    EXPECT_EQ(m_journal.RecordCount(), 1u) << "what was not committed is gone";
}

TEST_F(TwoPrograms, WriteInTurns)
{
    PeerProcess saver(L"save");
    for (int i = 0; i < 50; ++i)
        ASSERT_NE(AddEntry(m_journal, L"mine"), 0u);
    ASSERT_TRUE(saver.Hear());
    saver.Kill();
    EXPECT_EQ(RawStore(m_store.Path()).Integer("SELECT count(*) FROM journal WHERE subject = 'mine'"), 50);
    EXPECT_EQ(RawStore(m_store.Path()).Text("PRAGMA integrity_check"), "ok");
}

// Killed at any moment, the other program has lost nothing that it was told is saved.
TEST(KilledProgram, LosesNoSavedRecord)
{
    std::mt19937 random(static_cast<unsigned>(GetTickCount64()));
    for (int round = 0; round < 12; ++round) {
        const TestStore store;
        PeerProcess saver(L"save");
        DWORD last = 0;
        // The first round is killed while it opens the store.
        for (unsigned wanted = round ? 1 + static_cast<unsigned>(random()) % 60 : 0; last < wanted;)
            last = saver.Hear().value_or(UINT32_MAX);
        saver.Kill();
        while (saver.Unheard() >= sizeof(DWORD))
            last = saver.Hear().value_or(UINT32_MAX);
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        ASSERT_GE(journal.RecordCount(), last);
        EXPECT_LE(journal.RecordCount(), last + 1);
        for (const CEOID id : Walk(journal)) {
            const Received read(journal, id);
            ASSERT_EQ(read.Text(kSubject), std::to_wstring(id));
            ASSERT_EQ(read.Text(kBody)->size(), 3000 + id % 20'000);
        }
        EXPECT_NE(AddEntry(journal, L"goes on"), 0u);
        journal.Close();
        EXPECT_EQ(RawStore(store.Path()).Text("PRAGMA integrity_check"), "ok");
    }
}

TEST(TwoStarts, AtTheSameTimeMakeOneStore)
{
    for (int round = 0; round < 3; ++round) {
        const TestStore store;
        PeerProcess first(L"write a"), second(L"write b"), third(L"write c");
        EXPECT_EQ(first.Wait(), 0u);
        EXPECT_EQ(second.Wait(), 0u);
        EXPECT_EQ(third.Wait(), 0u);
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(journal.RecordCount(), 3u);
    }
}

} // namespace
