// What a failed operation leaves behind: never a "no", always a reason.
#include "mervane/file/trouble.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "mervane/sqlite/sql_trouble.h"
#include "peer_process.h"
#include "pick/category_draft.h"
#include "records.h"
#include "support/test_store.h"
#include "watched_files.h"

namespace {

TEST(TroubleText, SaysWhatWhyAndThatNothingIsLost)
{
    EXPECT_EQ(NotDoneText(L"The entry was not saved", StoreTrouble::Full),
              L"The entry was not saved: the disk is full.\n\nNothing that was stored before is lost.");
    EXPECT_EQ(NotDoneText(L"The entry was not saved", StoreTrouble::Locked, TypedText::StillThere),
              L"The entry was not saved: another program keeps the journal's file locked.\n\n"
              L"Nothing that was stored before is lost, and what you have typed is still there.");
    EXPECT_EQ(NotDoneText(L"Nothing was deleted", StoreTrouble::None),
              L"Nothing was deleted.\n\nNothing that was stored before is lost.");
}

TEST(TroubleText, EveryReasonIsAClauseOfItsOwn)
{
    std::vector<std::wstring> reasons;
    for (int i = 1; i <= static_cast<int>(StoreTrouble::Other); ++i) {
        const std::wstring reason = ReasonText(static_cast<StoreTrouble>(i));
        ASSERT_FALSE(reason.empty()) << i;
        EXPECT_TRUE(iswlower(static_cast<wint_t>(reason.front()))) << i;
        EXPECT_NE(reason.back(), L'.') << i;
        EXPECT_EQ(std::count(reasons.begin(), reasons.end(), reason), 0) << i;
        reasons.push_back(reason);
    }
    EXPECT_TRUE(ReasonText(StoreTrouble::None).empty());
}

TEST(TroubleOfResults, NamesTheReason)
{
    using mervane::TroubleOf;
    const struct {
        int code;
        unsigned long systemError;
        StoreTrouble trouble;
    } cases[] = {
        {SQLITE_DONE, 0, StoreTrouble::None},
        {SQLITE_CONSTRAINT_UNIQUE, 0, StoreTrouble::None},
        {SQLITE_FULL, 0, StoreTrouble::Full},
        {SQLITE_IOERR_SHMSIZE, ERROR_DISK_FULL, StoreTrouble::Full},
        {SQLITE_READONLY_CANTINIT, 0, StoreTrouble::ReadOnly},
        {SQLITE_READONLY_DBMOVED, 0, StoreTrouble::OtherFile},
        {SQLITE_BUSY_SNAPSHOT, 0, StoreTrouble::Locked},
        {SQLITE_PROTOCOL, 0, StoreTrouble::Locked},
        {SQLITE_CORRUPT_INDEX, 0, StoreTrouble::Damaged},
        {SQLITE_IOERR_SHORT_READ, 0, StoreTrouble::Damaged},
        {SQLITE_NOTADB, 0, StoreTrouble::NotAStore},
        {SQLITE_ERROR, 0, StoreTrouble::NotAStore},
        {SQLITE_NOMEM, 0, StoreTrouble::NoMemory},
        {SQLITE_IOERR_NOMEM, ERROR_DISK_FULL, StoreTrouble::NoMemory},
        {SQLITE_CANTOPEN, ERROR_ACCESS_DENIED, StoreTrouble::NoAccess},
        {SQLITE_CANTOPEN, ERROR_SHARING_VIOLATION, StoreTrouble::Locked},
        {SQLITE_CANTOPEN_ISDIR, 0, StoreTrouble::IsFolder},
        {SQLITE_PERM, 0, StoreTrouble::NoAccess},
        {SQLITE_IOERR_READ, ERROR_NOT_READY, StoreTrouble::Unreachable},
        {SQLITE_IOERR_WRITE, ERROR_WRITE_PROTECT, StoreTrouble::ReadOnly},
        {SQLITE_TOOBIG, 0, StoreTrouble::TooLarge},
        {SQLITE_INTERNAL, 0, StoreTrouble::Other},
    };
    for (const auto& each : cases)
        EXPECT_EQ(TroubleOf(each.code, each.systemError), each.trouble) << each.code;
}

class Trouble : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        ASSERT_EQ(m_categories.Open(), 1);
        ASSERT_EQ(m_contacts.Open(), 1);
        m_category = AddCategory(m_categories, L"work");
        m_contact = AddContact(m_contacts, L"Ada");
        m_id = Sent().Time(kDate, 1).Text(kSubject, L"first").Ids(kCategories, {m_category}).Write(m_journal);
        ASSERT_NE(m_id, 0u);
    }
    void TearDown() override
    {
        m_files.FailReads(false);
        m_files.FillDisk(false);
        m_journal.Close();
        m_categories.Close();
        m_contacts.Close();
    }
    // From now on what is in memory is not enough, and the file cannot be read.
    void LoseTheFile()
    {
        ASSERT_TRUE(RawStore(m_store.Path()).Run("UPDATE journal SET kind = 3"));
        m_files.FailReads(true);
    }

    TestStore m_store;
    WatchedFiles m_files;
    DbJournal m_journal;
    DbCategories m_categories;
    DbContacts m_contacts;
    CEOID m_id = 0, m_category = 0, m_contact = 0;
};

TEST_F(Trouble, ATrueNoIsNone)
{
    EXPECT_EQ(m_journal.SeekRecord(99), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_journal.DeleteRecord(99), 0);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(Sent().Text(kSubject, L"x").Write(m_journal, 99), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_journal.RowOf(99), -1);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_journal.SeekFirstRecord(), 1);
    EXPECT_EQ(m_journal.SeekNextRecord(), 0);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_journal.FindText(kSubject, L"nowhere", true), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_categories.Exists(99), 0);
    EXPECT_EQ(m_categories.Trouble(), StoreTrouble::None);
    EXPECT_EQ(AddCategory(m_categories, L"WORK"), 0u);
    EXPECT_EQ(m_categories.Trouble(), StoreTrouble::None);
}

TEST_F(Trouble, AFailedReadIsNeverANo)
{
    LoseTheFile();
    const auto expectFailure = [](CeDBase& database, const char* what) {
        EXPECT_NE(database.Trouble(), StoreTrouble::None) << what;
    };
    EXPECT_EQ(m_journal.SeekRecord(m_id), 0u);
    expectFailure(m_journal, "seek");
    EXPECT_EQ(m_journal.SeekFirstRecord(), 0);
    expectFailure(m_journal, "walk");
    EXPECT_EQ(m_journal.RecordCount(), 0u);
    expectFailure(m_journal, "count");
    EXPECT_EQ(m_journal.RowOf(m_id), -1);
    expectFailure(m_journal, "row of a record");
    EXPECT_EQ(m_journal.IdOfRow(0), 0u);
    expectFailure(m_journal, "record of a row");
    EXPECT_STREQ(m_journal.GetSubject(m_id), L"");
    expectFailure(m_journal, "subject");
    EXPECT_EQ(m_journal.FindText(kSubject, L"first", true), 0u);
    expectFailure(m_journal, "search");
    EXPECT_EQ(m_categories.Exists(m_category), 0);
    expectFailure(m_categories, "category");
    EXPECT_EQ(m_categories.GetNumActiveRecords(), 0);
    expectFailure(m_categories, "number of categories");
    EXPECT_EQ(JoinedNames(m_categories, {1, m_category}, L','), L"");
    expectFailure(m_categories, "names");
    EXPECT_EQ(m_contacts.NameOf(m_contact), L"");
    expectFailure(m_contacts, "name of a contact");

    m_files.FailReads(false);
    EXPECT_EQ(m_journal.SeekRecord(m_id), m_id);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    EXPECT_EQ(m_journal.RowOf(m_id), 0);
    EXPECT_EQ(m_journal.FindText(kSubject, L"first", true), m_id);
    EXPECT_EQ(m_categories.Exists(m_category), 1);
    EXPECT_EQ(m_categories.Trouble(), StoreTrouble::None);
}

TEST_F(Trouble, ARecordThatCannotBeReadFails)
{
    ASSERT_EQ(m_journal.SeekRecord(m_id), m_id);
    LoseTheFile();
    EXPECT_EQ(Received(m_journal).Id(), 0u);
    EXPECT_NE(m_journal.Trouble(), StoreTrouble::None);
}

TEST_F(Trouble, LookedUpCategoriesThatFailAreNotSavedAway)
{
    CategoryDraft draft;
    ASSERT_TRUE(draft.Load(m_categories));
    draft.Delete(0);
    LoseTheFile();
    EXPECT_FALSE(draft.Save(m_categories));
    EXPECT_NE(m_categories.Trouble(), StoreTrouble::None);
    m_files.FailReads(false);
    EXPECT_EQ(m_categories.Exists(m_category), 1);
    EXPECT_TRUE(draft.Save(m_categories));
    EXPECT_EQ(m_categories.Exists(m_category), 0);
    EXPECT_EQ(m_categories.Trouble(), StoreTrouble::None);
}

TEST_F(Trouble, ADraftOfWhatCannotBeReadIsNone)
{
    LoseTheFile();
    CategoryDraft draft;
    EXPECT_FALSE(draft.Load(m_categories));
    EXPECT_NE(m_categories.Trouble(), StoreTrouble::None);
}

TEST_F(Trouble, FullDiskIsNamed)
{
    m_files.FillDisk(true);
    EXPECT_EQ(AddEntry(m_journal, L"x"), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Full);
    EXPECT_EQ(m_journal.DeleteRecord(m_id), 0);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Full);
    EXPECT_EQ(m_categories.IncUse(m_category), 0);
    EXPECT_EQ(m_categories.Trouble(), StoreTrouble::Full);
    m_files.FillDisk(false);
    EXPECT_NE(AddEntry(m_journal, L"x"), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
}

TEST_F(Trouble, ABulkSaysWhyItFailed)
{
    m_files.FillDisk(true);
    {
        CeDBase::BulkScope bulk(m_journal);
        EXPECT_NE(AddEntry(m_journal, L"x"), 0u);
        EXPECT_EQ(bulk.Trouble(), StoreTrouble::None);
        EXPECT_EQ(bulk.Commit(), 0);
        EXPECT_EQ(bulk.Trouble(), StoreTrouble::Full);
        EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Full);
    }
    m_files.FillDisk(false);
    EXPECT_EQ(m_journal.RecordCount(), 1u);
    CeDBase::BulkScope bulk(m_journal);
    EXPECT_NE(AddEntry(m_journal, L"x"), 0u);
    EXPECT_EQ(bulk.Commit(), 1);
    EXPECT_EQ(bulk.Trouble(), StoreTrouble::None);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::None);
}

TEST_F(Trouble, AReasonOfEarlierIsNotToldAgain)
{
    LoseTheFile();
    EXPECT_EQ(m_journal.SeekRecord(m_id), 0u);
    EXPECT_NE(m_journal.Trouble(), StoreTrouble::None);
    m_files.FailReads(false);
    m_files.FillDisk(true);
    CeDBase::BulkScope bulk(m_journal);
    EXPECT_NE(AddEntry(m_journal, L"x"), 0u);
    EXPECT_EQ(bulk.Commit(), 0);
    EXPECT_EQ(bulk.Trouble(), StoreTrouble::Full);
}

// SQLite ends the whole transaction when a query in it cannot read. What is written then would be written at
// once and by itself, and yet be told as not written.
TEST_F(Trouble, AWriteWhoseTransactionARelatedReadHasEndedIsNotMade)
{
    ASSERT_EQ(m_journal.RecordCount(), 1u);
    int refused = 0;
    for (int behind = 0; behind < 12; ++behind) {
        ASSERT_EQ(PeerProcess::Run(L"write theirs"), 0u);
        const std::wstring subject = L"mine " + std::to_wstring(behind);
        m_files.FailOneRead(behind);
        const CEOID id = AddEntry(m_journal, subject);
        m_files.FailOneRead(-1);
        refused += id == 0;
        EXPECT_EQ(m_journal.Trouble() == StoreTrouble::None, id != 0) << behind;
        const std::string name = "mine " + std::to_string(behind);
        EXPECT_EQ(
            RawStore(m_store.Path()).Integer("SELECT count(*) FROM journal WHERE subject = '" + name + "'"),
            id ? 1 : 0)
            << behind;
    }
    EXPECT_GT(refused, 0);
}

TEST_F(Trouble, AnotherProgramsLockIsNamed)
{
    RawStore other(m_store.Path());
    ASSERT_TRUE(other.Run("BEGIN IMMEDIATE"));
    CeDBase::BulkScope bulk(m_journal);
    EXPECT_EQ(bulk.Trouble(), StoreTrouble::Locked);
    EXPECT_EQ(AddEntry(m_journal, L"x"), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Locked);
    EXPECT_EQ(m_categories.IncUse(m_category), 0);
    EXPECT_EQ(m_categories.Trouble(), StoreTrouble::Locked);
    EXPECT_EQ(bulk.Commit(), 0);
    EXPECT_EQ(bulk.Trouble(), StoreTrouble::Locked);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Locked);
    ASSERT_TRUE(other.Run("ROLLBACK"));
}

TEST_F(Trouble, AClosedDatabaseFails)
{
    m_journal.Close();
    EXPECT_EQ(m_journal.SeekRecord(m_id), 0u);
    EXPECT_EQ(m_journal.Trouble(), StoreTrouble::Unreachable);
    CeDBase::BulkScope bulk(m_journal);
    EXPECT_EQ(bulk.Commit(), 0);
    EXPECT_EQ(bulk.Trouble(), StoreTrouble::Unreachable);
}

// Zeroes the leaf of a table (not of an index) that holds the text.
void DamageLeafWith(const std::wstring& path, const std::string& text)
{
    constexpr size_t kPage = 4096;
    constexpr char kTableLeaf = 13;
    std::string bytes = ReadFileBytes(path);
    size_t at = bytes.find(text);
    while (at != std::string::npos && bytes[at / kPage * kPage] != kTableLeaf)
        at = bytes.find(text, at + 1);
    ASSERT_NE(at, std::string::npos);
    std::fill_n(bytes.begin() + static_cast<int>(at / kPage * kPage), kPage, '\0');
    ASSERT_TRUE(WriteFileBytes(path, bytes));
}

// A store of many categories, of which one lies where the file is damaged: the drafts were made before.
class TroubleOfDamage : public testing::Test {
  protected:
    void SetUp() override
    {
        DbCategories categories;
        ASSERT_EQ(categories.Open(), 1);
        CeDBase::BulkScope bulk(categories);
        for (int i = 0; i < 300; ++i) {
            if (i == 150)
                m_damaged = AddCategory(categories, L"\u00C4rger");
            ASSERT_NE(AddCategory(categories, std::to_wstring(i) + std::wstring(50, L'.')), 0u);
        }
        ASSERT_EQ(bulk.Commit(), 1);
        for (CategoryDraft* draft : {&m_deleting, &m_hiding})
            ASSERT_TRUE(draft->Load(categories));
        categories.Close();
        DamageLeafWith(m_store.Path(), "\xC3\x84rger");
    }
    int RowOfDamaged() const
    {
        int row = 0;
        while (row < m_deleting.Count() && m_deleting.At(row).id != m_damaged)
            ++row;
        return row;
    }

    const TestStore m_store;
    CEOID m_damaged = 0;
    CategoryDraft m_deleting;
    CategoryDraft m_hiding;
};

TEST_F(TroubleOfDamage, WhatIsDoneToTheDamagedIsNotSavedAway)
{
    const int row = RowOfDamaged();
    ASSERT_LT(row, m_deleting.Count());
    m_deleting.Delete(row);
    m_hiding.SetHidden(row, true);
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    // Read before the transaction, or SQLite itself would not end one in which it has met the damage.
    EXPECT_GT(categories.GetNumActiveRecords(), 200);
    for (const CategoryDraft* draft : {&m_deleting, &m_hiding}) {
        EXPECT_FALSE(draft->Save(categories));
        EXPECT_EQ(categories.Trouble(), StoreTrouble::Damaged);
    }
}

TEST_F(TroubleOfDamage, ANameThatMayBeAmongTheDamagedIsNotFree)
{
    DbCategories categories;
    ASSERT_EQ(categories.Open(), 1);
    EXPECT_EQ(categories.Exists(1), 1);
    EXPECT_EQ(categories.Trouble(), StoreTrouble::None);
    EXPECT_EQ(categories.Exists(m_damaged), 0);
    EXPECT_EQ(categories.Trouble(), StoreTrouble::Damaged);
    EXPECT_EQ(AddCategory(categories, L"\u00E4rger"), 0u);
    EXPECT_EQ(categories.Trouble(), StoreTrouble::Damaged);
    EXPECT_EQ(categories.Rename(1, L"\u00E4rger"), 0);
    EXPECT_EQ(categories.Trouble(), StoreTrouble::Damaged);
    const int active = categories.GetNumActiveRecords();
    EXPECT_EQ(categories.Trouble(), StoreTrouble::Damaged);
    EXPECT_GT(active, 200);
    EXPECT_LT(active, 301) << "each of them once";
    CategoryDraft draft;
    EXPECT_TRUE(draft.Load(categories)) << "what can be read is shown";
    EXPECT_EQ(draft.Count(), active);
}

TEST_F(Trouble, AStoreThatIsRefusedHasAReason)
{
    TestStore foreign;
    ASSERT_TRUE(WriteFileBytes(foreign.Path(), "something else"));
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_NE(journal.Trouble(), StoreTrouble::None);
    EXPECT_EQ(journal.SeekRecord(1), 0u);
    EXPECT_NE(journal.Trouble(), StoreTrouble::None);
}

TEST(SetAsideText, NamesEachFileBothWays)
{
    EXPECT_EQ(SetAsideText({{L"C:\\j.db-wal", L"C:\\j.db-wal.set-aside-1"}}),
              L"Beside the journal's file lay one that does not belong to it:\n\nC:\\j.db-wal\nis kept as\n"
              L"C:\\j.db-wal.set-aside-1\n\nNothing in the journal has been changed. If what you saved last "
              L"is missing, keep that file: it may be in it.");
    EXPECT_EQ(
        SetAsideText({{L"a", L"b"}, {L"c", L"d"}}),
        L"Beside the journal's file lay some that do not belong to it:\n\na\nis kept as\nb\n\nc\nis kept "
        L"as\nd\n\nNothing in the journal has been changed. If what you saved last is missing, keep that "
        L"file: it may be in it.");
}

TEST(NotOpenedText, NamesWhatWasSetAside)
{
    const std::wstring text = NotOpenedText(L"C:\\j.db", StoreTrouble::Locked);
    EXPECT_EQ(NotOpenedText(L"C:\\j.db", StoreTrouble::Locked, {{L"a", L"b"}}),
              text +
                  L"\n\nBeside the journal's file lay one that does not belong to it:\n\na\nis kept as\nb\n\n"
                  L"If what you saved last is missing, keep that file: it may be in it.");
}

TEST(NotKeptText, NamesTheLog)
{
    EXPECT_EQ(
        NotKeptText(L"C:\\j.db", StoreTrouble::Full),
        L"The journal's file was not in its place any more, and no whole copy of what was open could be "
        L"kept beside it: the disk is full.\n\nWhat was saved last may be in\n\nC:\\j.db-wal\n\nKeep "
        L"that file, and look for the journal's own: the two belong together.");
}

} // namespace
