// What reaches the disk, and what the system is asked for on the way.
#include <gtest/gtest.h>

#include <sqlite3.h>

#include "records.h"
#include "support/test_store.h"
#include "watched_files.h"

namespace {

class Watched : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        m_id = AddEntry(m_journal, L"first", 1);
        ASSERT_NE(m_id, 0u);
    }
    void TearDown() override { m_journal.Close(); }

    // What is on disk now, in the file and its log, as a program finds it after this one was killed.
    int64_t CountOnDisk()
    {
        const std::wstring copy = m_store.Path() + L".copy";
        EXPECT_TRUE(WriteFileBytes(copy, ReadFileBytes(m_store.Path())));
        EXPECT_TRUE(WriteFileBytes(copy + L"-wal", ReadFileBytes(m_store.Path() + L"-wal")));
        const int64_t count = RawStore(copy).Integer("SELECT count(*) FROM journal");
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm"})
            DeleteFileW((copy + suffix).c_str());
        return count;
    }

    TestStore m_store;
    WatchedFiles m_files;
    DbJournal m_journal;
    CEOID m_id = 0;
};

TEST_F(Watched, SavesWithOneFlush)
{
    for (int i = 0; i < 20; ++i) {
        m_files.Forget();
        ASSERT_NE(AddEntry(m_journal, std::wstring(2000, L'x'), static_cast<uint64_t>(i)), 0u);
        EXPECT_EQ(m_files.Seen().syncs, 1);
        EXPECT_EQ(CountOnDisk(), i + 2);
        m_files.Forget();
        ASSERT_EQ(Sent().Text(kSubject, std::to_wstring(i)).Write(m_journal, m_id), m_id);
        EXPECT_EQ(m_files.Seen().syncs, 1);
    }
    m_files.Forget();
    EXPECT_EQ(m_journal.DeleteRecord(m_id), 1);
    EXPECT_EQ(m_files.Seen().syncs, 1);
    EXPECT_EQ(CountOnDisk(), 20);
}

TEST_F(Watched, DoesABulkWithOneFlush)
{
    m_files.Forget();
    CeDBase::BulkScope bulk(m_journal);
    for (int i = 0; i < 500; ++i)
        ASSERT_NE(AddEntry(m_journal, L"x"), 0u);
    EXPECT_EQ(m_files.Seen().syncs, 0);
    ASSERT_EQ(bulk.Commit(), 1);
    EXPECT_EQ(m_files.Seen().syncs, 1);
    EXPECT_EQ(CountOnDisk(), 501);
}

TEST_F(Watched, KeepsTheLogWithinBounds)
{
    // Each body differs everywhere: pages that stay the same are not written.
    const auto body = [](int i) { return std::wstring(400'000, static_cast<wchar_t>(L'!' + i % 90)); };
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(Sent().Text(kBody, body(i)).Write(m_journal, m_id), m_id);
    EXPECT_LT(ReadFileBytes(m_store.Path() + L"-wal").size(), 20'000'000u) << "of 40 MB of bodies";
    EXPECT_TRUE(Received(m_journal, m_id).Text(kBody) == body(99));
}

TEST_F(Watched, WalksWithoutAskingTheSystem)
{
    {
        CeDBase::BulkScope bulk(m_journal);
        for (uint64_t i = 0; i < 2000; ++i)
            ASSERT_NE(Sent().Time(kDate, i).Text(kBody, std::wstring(1500, L'x')).Write(m_journal), 0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    EXPECT_EQ(m_journal.RecordCount(), 2001u);
    m_files.Forget();
    EXPECT_EQ(Walk(m_journal).size(), 2001u);
    EXPECT_LE(m_files.Seen().reads, RawStore(m_store.Path()).Integer("PRAGMA page_count")) << "a page twice";
    EXPECT_LT(m_files.Seen().locks, 10);
}

TEST_F(Watched, ReadsAPageUnderOneLock)
{
    for (int i = 0; i < 60; ++i)
        ASSERT_NE(AddEntry(m_journal, L"x"), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 61u);
    m_files.Forget();
    (void)m_journal.IdOfRow(0);
    const int locksOfOneCall = m_files.Seen().locks;
    m_files.Forget();
    const CeDBase::ReadScope scope(m_journal);
    ASSERT_NE(m_journal.SeekRow(5), 0u);
    for (int i = 0; i < 50; ++i) {
        EXPECT_NE(Received(m_journal).Id(), 0u);
        EXPECT_EQ(m_journal.SeekNextRecord(), 1);
    }
    EXPECT_LE(m_files.Seen().locks, locksOfOneCall);
}

TEST_F(Watched, LeavesTheRecordWhenTheDiskIsFull)
{
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    m_files.FillDisk(true);
    EXPECT_EQ(AddEntry(m_journal, L"new"), 0u);
    EXPECT_EQ(Sent().Text(kSubject, L"new").Write(m_journal, m_id), 0u);
    EXPECT_EQ(Sent().Text(kBody, std::wstring(1'000'000, L'x')).Write(m_journal, m_id), 0u);
    EXPECT_EQ(m_journal.DeleteRecord(m_id), 0);
    EXPECT_STREQ(m_journal.GetSubject(m_id), L"first");
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    EXPECT_EQ(Walk(m_journal), std::vector<CEOID>{m_id});
    m_files.FillDisk(false);
    EXPECT_NE(AddEntry(m_journal, L"new"), 0u);
    EXPECT_EQ(CountOnDisk(), 2);
}

TEST_F(Watched, LeavesCategoriesAndContactsWhenTheDiskIsFull)
{
    DbCategories categories;
    DbContacts contacts;
    ASSERT_EQ(categories.Open(), 1);
    ASSERT_EQ(contacts.Open(), 1);
    const CEOID category = AddCategory(categories, L"Work"), contact = AddContact(contacts, L"Doe");
    ASSERT_EQ(categories.IncUse(category), 1);
    m_files.FillDisk(true);
    EXPECT_EQ(categories.IncUse(category), 0);
    EXPECT_EQ(categories.DecUse(category), 0);
    EXPECT_EQ(categories.Reset(), 0);
    EXPECT_EQ(AddCategory(categories, L"Home"), 0u);
    EXPECT_EQ(Sent().Text(kCategoriesKey, L"Office").Write(categories, category), 0u);
    EXPECT_EQ(categories.DeleteRecord(category), 0);
    EXPECT_EQ(Sent().Text(kContactsKey, L"Roe").Write(contacts, contact), 0u);
    m_files.FillDisk(false);
    EXPECT_EQ(Received(categories, category).Number(kCategoryUses), 1);
    EXPECT_EQ(categories.RecordCount(), 1u);
    EXPECT_EQ(JoinedNames(categories, {1, category}, L','), L"Work");
    EXPECT_EQ(JoinedNames(contacts, {1, contact}, L';'), L"Doe");
    EXPECT_EQ(categories.Reset(), 1);
    EXPECT_EQ(Received(categories, category).Number(kCategoryUses), 0);
}

TEST_F(Watched, LeavesTheRecordWhenTheFlushFails)
{
    m_files.FailSyncs(true);
    EXPECT_EQ(AddEntry(m_journal, L"new"), 0u);
    EXPECT_EQ(Sent().Text(kSubject, L"new").Write(m_journal, m_id), 0u);
    EXPECT_EQ(m_journal.DeleteRecord(m_id), 0);
    m_files.FailSyncs(false);
    EXPECT_STREQ(m_journal.GetSubject(m_id), L"first");
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    EXPECT_NE(AddEntry(m_journal, L"new"), 0u);
    EXPECT_EQ(m_journal.RecordCount(), 2u);
}

TEST_F(Watched, GivesUpABulkWhenTheDiskIsFull)
{
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
        EXPECT_EQ(m_journal.DeleteRecord(m_id), 1);
        m_files.FillDisk(true);
        // More than the page cache holds, so that it fails before the end.
        bool failed = false;
        for (int i = 0; i < 100 && !failed; ++i)
            failed = !Sent().Text(kBody, std::wstring(100'000, L'x')).Write(m_journal);
        EXPECT_TRUE(failed);
        m_files.FillDisk(false);
        (void)m_journal.RecordCount();
        EXPECT_EQ(AddEntry(m_journal, L"not alone"), 0u) << "also after a read";
        EXPECT_EQ(bulk.Commit(), 0);
    }
    EXPECT_EQ(Walk(m_journal), std::vector<CEOID>{m_id});
    EXPECT_EQ(CountOnDisk(), 1);
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"a"), 0u);
        m_files.FillDisk(true);
        EXPECT_EQ(bulk.Commit(), 0);
    }
    m_files.FillDisk(false);
    EXPECT_EQ(Walk(m_journal), std::vector<CEOID>{m_id});
    EXPECT_NE(AddEntry(m_journal, L"as ever"), 0u);
}

TEST_F(Watched, ReadsAgainWhatCouldNotBeRead)
{
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    const CEOID category = AddCategory(categories, L"Work");
    ASSERT_NE(AddEntry(m_journal, L"second", 2), 0u);
    // A fresh start, with nothing in memory yet.
    categories.Close();
    m_journal.Close();
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    ASSERT_EQ(categories.Open(), 1);
    m_files.FailReads(true);
    EXPECT_EQ(m_journal.RecordCount(), 0u);
    EXPECT_EQ(m_journal.SeekFirstRecord(), 0);
    EXPECT_EQ(m_journal.SeekRecord(m_id), 0u);
    EXPECT_EQ(JoinedNames(categories, {1, category}, L','), L"");
    EXPECT_EQ(categories.GetNumActiveRecords(), 0);
    EXPECT_EQ(AddEntry(m_journal, L"third"), 0u);
    m_files.FailReads(false);
    EXPECT_EQ(m_journal.RecordCount(), 2u);
    EXPECT_EQ(Walk(m_journal).size(), 2u);
    EXPECT_EQ(JoinedNames(categories, {1, category}, L','), L"Work");
    EXPECT_EQ(categories.GetNumActiveRecords(), 1);
    EXPECT_NE(AddEntry(m_journal, L"third"), 0u);
}

TEST_F(Watched, AFailedSaveInsideAScopeKeepsTheScope)
{
    const CeDBase::ReadScope scope(m_journal);
    ASSERT_EQ(m_journal.SeekFirstRecord(), 1);
    m_files.FillDisk(true);
    EXPECT_EQ(Sent().Time(kDate, 77).Write(m_journal, m_id), 0u);
    m_files.FillDisk(false);
    EXPECT_EQ(Received(m_journal).Time(kDate), 1u);
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
}

} // namespace
