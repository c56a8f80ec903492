// What could not be read once is read again when it can be, without anybody having changed it.
#include "mervane/store/unread.h"

#include <gtest/gtest.h>

#include "change_listener.h"
#include "records.h"
#include "support/test_store.h"
#include "watched_files.h"

namespace {

TEST(UnreadTimes, AreTriedMoreAndMoreSeldom)
{
    mervane::Unread unread;
    EXPECT_FALSE(unread.IsDue(1000)) << "nothing was unread";
    unread.Note(StoreTrouble::None);
    unread.Note(StoreTrouble::Damaged);
    unread.Note(StoreTrouble::TooLarge);
    EXPECT_FALSE(unread.IsDue(1000)) << "what stays as it is";
    ULONGLONG now = 1000, last = 0;
    unread.Note(StoreTrouble::Locked);
    ASSERT_TRUE(unread.IsDue(now));
    for (int i = 0; i < 10; ++i) {
        EXPECT_FALSE(unread.IsDue(now)) << "once";
        unread.Note(StoreTrouble::Locked);
        const ULONGLONG start = now;
        while (!unread.IsDue(now))
            ++now;
        EXPECT_GE(now - start, last);
        last = now - start;
        EXPECT_LE(last, 60'000u);
    }
    EXPECT_GE(last, 10'000u);
    // Once all was read, the next time counts as the first.
    now += 200'000;
    EXPECT_FALSE(unread.IsDue(now));
    unread.Note(StoreTrouble::Unreachable);
    EXPECT_TRUE(unread.IsDue(now + 1));
    unread.Note(StoreTrouble::Unreachable);
    EXPECT_TRUE(unread.IsDue(now + 1000));
}

class UnreadStore : public testing::Test {
  protected:
    bool HearsThatAllMayBeNew()
    {
        const std::pair<WPARAM, LPARAM> all{kChangeWorkEnded, 0};
        return PumpUntil([&] {
            const Heard heard = m_listener.Take();
            return std::find(heard.begin(), heard.end(), all) != heard.end();
        });
    }

    TestStore m_store;
    WatchedFiles m_files;
    Listener m_listener;
    DbJournal m_journal;
};

TEST_F(UnreadStore, IsToldOfOnceItCanBeRead)
{
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    const CEOID id = AddEntry(m_journal, L"here");
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(m_listener.Window()), 1);
    m_files.FailReads(true);
    EXPECT_STREQ(m_journal.GetSubject(id), L"");
    ASSERT_NE(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_listener.HeardSoFar(), Heard{}) << "nobody has changed anything";
    m_files.FailReads(false);
    EXPECT_TRUE(HearsThatAllMayBeNew());
    EXPECT_STREQ(m_journal.GetSubject(id), L"here");
    m_journal.Close();
}

// The records are known then, but not what they are sorted by: they come in another order.
TEST_F(UnreadStore, IsToldOfAlsoWhereOnlyTheSortCouldNotBeRead)
{
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    const CEOID last = AddEntry(m_journal, L"b"), first = AddEntry(m_journal, L"a");
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(m_listener.Window(), {kDate, 0}), 1);
    {
        const CeDBase::ReadScope scope(m_journal);
        ASSERT_EQ(m_journal.PassingRows(), 2u);
        ASSERT_EQ(m_journal.Trouble(), StoreTrouble::None);
        m_files.FailReads(true);
        m_journal.SetSort({kSubject, 0}, 1);
        EXPECT_EQ(m_journal.PassingRows(), 2u) << "both are there";
        EXPECT_NE(m_journal.Trouble(), StoreTrouble::None);
        m_files.FailReads(false);
    }
    EXPECT_TRUE(HearsThatAllMayBeNew());
    EXPECT_EQ(m_journal.PassingRows(), 2u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(Rows(m_journal), (std::vector<CEOID>{first, last}));
    m_journal.Close();
}

// A write that has failed was told by itself.
TEST_F(UnreadStore, IsNotWhatCouldNotBeWritten)
{
    ASSERT_EQ(m_journal.Open(m_listener.Window()), 1);
    ASSERT_NE(AddEntry(m_journal, L"here"), 0u);
    m_files.FillDisk(true);
    EXPECT_EQ(AddEntry(m_journal, L"there"), 0u);
    m_files.FillDisk(false);
    HWND hub = FindWindowExW(HWND_MESSAGE, nullptr, L"MervaneStore", nullptr);
    ASSERT_NE(hub, nullptr);
    for (int i = 0; i < 3; ++i)
        SendMessageW(hub, WM_TIMER, 1, 0);
    EXPECT_EQ(m_listener.HeardSoFar(), Heard{});
    m_journal.Close();
}

} // namespace
