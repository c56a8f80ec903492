// What happens while another program's lock keeps a write waiting.
#include <gtest/gtest.h>

#include <functional>

#include "mervane/file/store_waiter.h"
#include "records.h"
#include "support/test_store.h"

namespace {

class LockWait : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        for (int i = 1; i <= 5; ++i)
            ASSERT_NE(AddEntry(m_journal, L"entry " + std::to_wstring(i), static_cast<uint64_t>(i)), 0u);
        m_other = std::make_unique<RawStore>(m_store.Path());
        ASSERT_TRUE(m_other->Run("BEGIN IMMEDIATE"));
        SetStoreWaiter([](DWORD milliseconds) {
            ++s_waits;
            if (s_onWait)
                s_onWait();
            Sleep(milliseconds);
        });
    }
    void TearDown() override
    {
        SetStoreWaiter(nullptr);
        s_onWait = nullptr;
        s_waits = 0;
        m_journal.Close();
    }
    // Does this in the third step of the waiting, then lets go of the lock.
    void MeanwhileOnce(std::function<void()> action)
    {
        s_onWait = [this, action = std::move(action)] {
            if (s_waits != 3)
                return;
            action();
            ASSERT_TRUE(m_other->Run("COMMIT"));
        };
    }
    std::wstring SubjectAt(uint32_t row)
    {
        return m_journal.SeekRow(row) ? Received(m_journal).Text(kSubject).value_or(L"") : L"";
    }

    static inline int s_waits = 0;
    static inline std::function<void()> s_onWait;
    TestStore m_store;
    DbJournal m_journal;
    std::unique_ptr<RawStore> m_other;
};

TEST_F(LockWait, AWriteWaitsForTheLock)
{
    MeanwhileOnce([] {});
    const CEOID id = AddEntry(m_journal, L"new", 6);
    EXPECT_NE(id, 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None) << "it was done";
    EXPECT_EQ(s_waits, 3);
    EXPECT_EQ(m_other->Integer("SELECT count(*) FROM journal"), 6);
}

TEST_F(LockWait, ItGivesUpInTheEnd)
{
    const ULONGLONG start = GetTickCount64();
    EXPECT_EQ(AddEntry(m_journal, L"new", 6), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Locked);
    EXPECT_GE(GetTickCount64() - start, 2400u);
    EXPECT_GT(s_waits, 10);
    EXPECT_EQ(m_journal.RecordCount(), 5u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
}

TEST_F(LockWait, WindowsMayReadMeanwhile)
{
    MeanwhileOnce([this] {
        EXPECT_EQ(m_journal.RecordCount(), 5u);
        const CeDBase::ReadScope scope(m_journal);
        EXPECT_EQ(SubjectAt(4), L"entry 5");
        EXPECT_STREQ(m_journal.GetSubject(1), L"entry 1");
    });
    const CeDBase::ReadScope scope(m_journal);
    EXPECT_EQ(m_journal.SeekRow(1), 2u);
    EXPECT_EQ(Sent().Text(kSubject, L"changed").Write(m_journal, 1), 1u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(SubjectAt(0), L"changed");
}

TEST_F(LockWait, AWalkGoesOnFromWhereItStood)
{
    MeanwhileOnce([this] { EXPECT_EQ(SubjectAt(4), L"entry 5"); });
    ASSERT_NE(m_journal.SeekFirstRecord(), 0);
    ASSERT_NE(m_journal.SeekNextRecord(), 0);
    EXPECT_EQ(m_journal.DeleteRecord(2), 1);
    ASSERT_NE(m_journal.SeekNextRecord(), 0);
    EXPECT_EQ(Received(m_journal).Id(), 3u);
}

TEST_F(LockWait, AWriteMeanwhileFailsAtOnce)
{
    MeanwhileOnce([this] {
        DbJournal other;
        ASSERT_EQ(other.Open(nullptr), 1);
        EXPECT_EQ(AddEntry(other, L"meanwhile"), 0u);
        EXPECT_EQ(other.Trouble(), StoreTrouble::Locked);
        CeDBase::BulkScope bulk(other);
        EXPECT_EQ(AddEntry(other, L"meanwhile"), 0u);
        EXPECT_EQ(bulk.Commit(), 0);
        EXPECT_EQ(bulk.Trouble(), StoreTrouble::Locked);
    });
    EXPECT_NE(AddEntry(m_journal, L"new", 6), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(s_waits, 3) << "nothing else has waited";
    EXPECT_EQ(m_journal.RecordCount(), 6u);
}

TEST_F(LockWait, ABulkWaitsOnce)
{
    MeanwhileOnce([this] { EXPECT_EQ(SubjectAt(0), L"entry 1"); });
    CeDBase::BulkScope bulk(m_journal);
    EXPECT_EQ(bulk.Trouble(), StoreTrouble::None);
    for (int i = 0; i < 10; ++i)
        EXPECT_NE(AddEntry(m_journal, L"new", 9), 0u);
    EXPECT_EQ(bulk.Commit(), 1);
    EXPECT_EQ(s_waits, 3);
    EXPECT_EQ(m_journal.RecordCount(), 15u);
}

TEST_F(LockWait, ReadsDoNotWait)
{
    EXPECT_EQ(m_journal.RecordCount(), 5u);
    EXPECT_EQ(SubjectAt(2), L"entry 3");
    EXPECT_EQ(s_waits, 0);
}

} // namespace
