// Stores of older versions.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "mervane/backup/restoration.h"
#include "mervane/sqlite/store_header.h"
#include "records.h"
#include "support/test_store.h"
#include "watched_files.h"

namespace {

std::string DumpOf(int version)
{
    std::ifstream file(std::string(SCHEMA_FOLDER) + "/schema_v" + std::to_string(version) + ".sql");
    std::stringstream dump;
    dump << file.rdbuf();
    return dump.str();
}

constexpr const char* kAllColumns = "SELECT group_concat(sql || ';' || char(10), '') FROM (SELECT sql FROM "
                                    "sqlite_schema WHERE name NOT LIKE 'sqlite_%' ORDER BY type DESC, name)";

class Version1Store : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_FALSE(DumpOf(1).empty());
        RawStore raw(m_store.Path());
        ASSERT_TRUE(raw.Run(DumpOf(1)));
        ASSERT_TRUE(
            raw.Run("INSERT INTO journal(date, subject, contacts) VALUES(5, 'kept', x'0100000002000000');"
                    "INSERT INTO categories(name, uses) VALUES('Work', 3);"
                    "INSERT INTO contacts(oid, file_as, company) VALUES(2, 'Doe, Jane', 'Acme');"
                    "PRAGMA application_id = 0x514A524E; PRAGMA user_version = 1001"));
    }
    void TearDown() override { SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_NORMAL); }

    TestStore m_store;
};

TEST_F(Version1Store, GetsTheNewestSchemaAndKeepsItsRecords)
{
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_STREQ(journal.GetSubject(1), L"kept");
        DbContacts contacts;
        ASSERT_EQ(contacts.Open(), 1);
        EXPECT_EQ(Received(contacts, 2).Text(kContactCompany), L"Acme");
        EXPECT_EQ(Sent().Text(kContactPhones, L"1\r\n2").Write(contacts, 2), 2u);
        EXPECT_EQ(JoinedNames(contacts, {1, 2}, L';'), L"Doe, Jane");
    }
    RawStore raw(m_store.Path());
    EXPECT_EQ(raw.Integer("PRAGMA user_version"), mervane::kUserVersion);
    EXPECT_EQ(raw.Text(kAllColumns), DumpOf(mervane::kSchemaVersion));
    EXPECT_EQ(raw.Text("SELECT phones FROM contacts"), "1\r\n2");
    EXPECT_EQ(raw.Integer("SELECT uses FROM categories"), 3);
    EXPECT_EQ(raw.Text("PRAGMA integrity_check"), "ok");
}

TEST_F(Version1Store, ThatIsReadOnlyIsReadAndStaysAsItIs)
{
    ASSERT_TRUE(SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_READONLY));
    const std::string before = ReadFileBytes(m_store.Path());
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_STREQ(journal.GetSubject(1), L"kept");
        DbContacts contacts;
        ASSERT_EQ(contacts.Open(), 1);
        const Received read(contacts, 2);
        EXPECT_EQ(read.Ids(), (std::vector<CEPROPID>{kContactCompany, kContactsKey}));
        EXPECT_EQ(read.Text(kContactsKey), L"Doe, Jane");
        EXPECT_EQ(JoinedNames(contacts, {1, 2}, L';'), L"Doe, Jane");
        EXPECT_EQ(Rows(contacts), std::vector<CEOID>{2});
        EXPECT_EQ(AddContact(contacts, L"new"), 0u);
    }
    EXPECT_EQ(ReadFileBytes(m_store.Path()), before);
}

TEST_F(Version1Store, IsCopiedBeforeItIsMigrated)
{
    const std::wstring folder = BackupFolderOf(m_store.Path());
    for (const size_t copies : {1u, 2u}) {
        {
            DbJournal journal;
            ASSERT_EQ(journal.Open(nullptr), 1);
        }
        const auto found = BackupsOf(m_store.Path());
        ASSERT_EQ(found.size(), copies);
        const std::wstring name = L"-before-v" + std::to_wstring(mervane::kSchemaVersion);
        EXPECT_TRUE(found[0].ends_with(name + (copies == 1 ? L".db" : L"-2.db")));
        RawStore copy(folder + found[0]);
        EXPECT_EQ(copy.Integer("PRAGMA user_version"), 1001);
        EXPECT_EQ(copy.Text("SELECT subject FROM journal"), "kept");
        EXPECT_EQ(copy.Text("PRAGMA integrity_check"), "ok");
        // Gone back to it.
        ASSERT_TRUE(WriteFileBytes(m_store.Path(), ReadFileBytes(folder + found[0])));
    }
}

TEST_F(Version1Store, IsNotMigratedWithoutACopy)
{
    const std::string before = ReadFileBytes(m_store.Path());
    const std::wstring folder = BackupFolderOf(m_store.Path());
    const std::wstring inItsPlace = folder.substr(0, folder.size() - 1);
    ASSERT_TRUE(WriteFileBytes(inItsPlace, ""));
    {
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_NE(journal.Trouble(), StoreTrouble::None);
    }
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == before);
    EXPECT_TRUE(DeleteFileW(inItsPlace.c_str()));
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 1);
}

TEST_F(Version1Store, ThatCannotBeCopiedWholeIsNotMigrated)
{
    const std::string before = ReadFileBytes(m_store.Path());
    WatchedFiles files;
    files.FillDisk(true);
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::Full);
    EXPECT_TRUE(BackupsOf(m_store.Path()).empty());
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == before);
}

// A backup may take its place, however it is damaged.
TEST_F(Version1Store, ThatIsDamagedIsSaidToBe)
{
    ASSERT_TRUE(
        RawStore(m_store.Path())
            .Run("INSERT INTO journal(subject, body) WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL "
                 "SELECT i + 1 FROM n WHERE i < 100) SELECT 'Entry ' || i, hex(zeroblob(9000)) FROM n"));
    const std::string whole = ReadFileBytes(m_store.Path());
    ASSERT_GT(whole.size(), size_t{4096 * 400});
    const auto damaged = [&](size_t first, size_t pages) {
        std::string bytes = whole;
        return bytes.replace(4096 * first, 4096 * pages, 4096 * pages, '\x55');
    };
    for (const std::string& bytes :
         {whole.substr(0, 4096 * 200), whole.substr(0, 4096), whole.substr(0, 5000), damaged(1, 1),
          damaged(2, 1), damaged(3, 4), damaged(200, 20), damaged(whole.size() / 4096 - 1, 1)}) {
        ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
        DbJournal journal;
        const bool isOpen = journal.Open(nullptr) != 0;
        EXPECT_FALSE(isOpen);
        EXPECT_TRUE(mervane::IsBroken(m_store.Path(), journal.Trouble()))
            << bytes.size() << " " << static_cast<int>(journal.Trouble());
        EXPECT_TRUE(BackupsOf(m_store.Path()).empty());
        EXPECT_TRUE(ReadFileBytes(m_store.Path()) == bytes);
    }
}

TEST(NewStore, IsNoMigration)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_TRUE(BackupsOf(store.Path()).empty());
}

// What fails on the way leaves the store of its old version.
TEST_F(Version1Store, IsNotMigratedHalfway)
{
    ASSERT_TRUE(RawStore(m_store.Path()).Run("ALTER TABLE contacts ADD COLUMN note TEXT"));
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    RawStore raw(m_store.Path());
    EXPECT_EQ(raw.Integer("PRAGMA user_version"), 1001);
    EXPECT_FALSE(raw.Run("SELECT first_name FROM contacts"));
}

} // namespace
