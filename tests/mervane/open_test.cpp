// Opening stores, and what is done with one that is open.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <sstream>

#include "mervane/file/store_path.h"
#include "mervane/sqlite/store_header.h"
#include "open_fixture.h"

namespace {

TEST_F(Opening, MakesTheFileAndItsFolders)
{
    const std::wstring folder = Path() + L".folder";
    SetEnvironmentVariableW(L"MERVANE_STORE", (folder + L"\\a\\b\\own.db").c_str());
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_NE(AddEntry(journal, L"s"), 0u);
    }
    EXPECT_TRUE(Exists(folder + L"\\a\\b\\own.db"));
    EXPECT_TRUE(DeleteFileW((folder + L"\\a\\b\\own.db").c_str()));
    for (const wchar_t* part : {L"\\a\\b", L"\\a", L""})
        EXPECT_TRUE(RemoveDirectoryW((folder + part).c_str()));
}

// By hand: the first part of the journal by which SQLite takes back a transaction on a file of so many pages.
std::string JournalOf(char pages)
{
    std::string journal("\xD9\xD5\x05\xF9\x20\xA1\x63\xD7\0\0\0\0nonc\0\0\0\0\0\0\2\0\0\0\x10\0", 28);
    journal[19] = pages;
    journal.resize(512);
    return journal;
}

TEST_F(Opening, MakesAFileAnewWhoseMakingWasCutOff)
{
    const std::string begun("SQLite format 3\0\x10\0", 18);
    for (const std::string& start : {std::string(), begun, begun.substr(0, 5)}) {
        std::string bytes = start;
        bytes.resize(8192);
        ASSERT_TRUE(WriteFileBytes(Path(), bytes));
        ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), JournalOf(0)));
        ExpectUsable(0);
        ExpectUsable(1);
        EXPECT_FALSE(Exists(Beside(L"-journal")));
        DeleteFileW(Path().c_str());
    }
}

TEST_F(Opening, LeavesAFileBesideAJournalThatIsNotOfItsMaking)
{
    const auto expectRefused = [&](const std::string& start, const std::string& journal) {
        std::string bytes = start;
        bytes.resize(8192);
        ASSERT_TRUE(WriteFileBytes(Path(), bytes));
        ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), journal));
        DbJournal opened;
        EXPECT_EQ(opened.Open(nullptr), 0);
        EXPECT_EQ(ReadFileBytes(Path()), bytes);
        EXPECT_EQ(ReadFileBytes(Beside(L"-journal")), journal);
    };
    expectRefused("Dear diary", JournalOf(0));
    expectRefused("SQL", JournalOf(2));
    expectRefused("SQL", JournalOf(0).substr(0, 50));
    expectRefused("SQL", std::string(512, '\0'));
}

TEST_F(Opening, UsesTheApplicationDataWithoutTheVariable)
{
    wchar_t old[MAX_PATH];
    GetEnvironmentVariableW(L"APPDATA", old, MAX_PATH);
    SetEnvironmentVariableW(L"MERVANE_STORE", nullptr);
    SetEnvironmentVariableW(L"APPDATA", (Path() + L".data").c_str());
    EXPECT_EQ(mervane::StorePath(), Path() + L".data\\Quillmarsh\\Journal\\journal.db");
    SetEnvironmentVariableW(L"APPDATA", nullptr);
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    SetEnvironmentVariableW(L"APPDATA", old);
}

TEST_F(Opening, TakesLongAndForeignNames)
{
    const std::wstring path = Path() + L".\u00e4\u65e5\u672c \u20ac.db";
    SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_NE(AddEntry(journal, L"s"), 0u);
    }
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    EXPECT_EQ(mervane::PathKey(L"C:\\A\\\u00c4"), mervane::PathKey(L"c:\\a\\\u00e4"));
}

// Longer than the system takes without being asked to: opened or refused, but either wholly.
TEST_F(Opening, TakesOrRefusesPathsBeyondTheUsualLength)
{
    const std::wstring folder = Path() + L".folder";
    const std::wstring path = folder + L"\\" + std::wstring(240, L'x') + L"\\own.db";
    ASSERT_GT(path.size(), size_t{MAX_PATH});
    SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
    {
        DbJournal journal;
        const int opened = journal.Open(nullptr);
        EXPECT_EQ(AddEntry(journal, L"s") != 0, opened == 1);
        EXPECT_EQ(Exists(L"\\\\?\\" + path), opened == 1);
    }
    const std::wstring whole = L"\\\\?\\" + path;
    DeleteFileW(whole.c_str());
    RemoveDirectoryW(whole.substr(0, whole.size() - 7).c_str());
    EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
}

TEST_F(Opening, MarksTheFile)
{
    MakeStore();
    const std::string bytes = ReadFileBytes(Path());
    ASSERT_GE(bytes.size(), 100u);
    EXPECT_EQ(bytes.substr(0, 16), std::string("SQLite format 3\0", 16));
    EXPECT_EQ(bytes.substr(68, 4), "QJRN");
    RawStore raw(Path());
    EXPECT_EQ(raw.Integer("PRAGMA user_version"), 2001);
    EXPECT_EQ(raw.Text("PRAGMA journal_mode"), "wal");
    EXPECT_EQ(raw.Text("PRAGMA integrity_check"), "ok");
}

// The newest version's dump lies beside this file; the older ones stay there too.
TEST_F(Opening, MakesTheSchemaOfTheDump)
{
    MakeStore();
    std::ifstream file(std::string(SCHEMA_FOLDER) + "/schema_v" + std::to_string(mervane::kSchemaVersion) +
                       ".sql");
    ASSERT_TRUE(file) << "the newest version has no dump";
    std::stringstream dump;
    dump << file.rdbuf();
    EXPECT_EQ(RawStore(Path()).Text("SELECT group_concat(sql || ';' || char(10), '') FROM (SELECT sql FROM "
                                    "sqlite_schema WHERE name NOT LIKE 'sqlite_%' ORDER BY type DESC, name)"),
              dump.str());
}

TEST_F(Opening, MakesAStoreOfAnEmptyFile)
{
    ASSERT_TRUE(WriteFileBytes(Path(), ""));
    ExpectUsable(0);
    ExpectUsable(1);
}

TEST_F(Opening, UsesANewerStoreThatAllowsIt)
{
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run("ALTER TABLE journal ADD COLUMN mood TEXT; PRAGMA user_version = 7001"));
    ExpectUsable(1);
    EXPECT_EQ(RawStore(Path()).Integer("PRAGMA user_version"), 7001);
}

TEST_F(Opening, TakesWhatToolsAddBesideTheTables)
{
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run(
        "CREATE TABLE notes(x, entry REFERENCES journal(oid) ON DELETE CASCADE); INSERT INTO notes VALUES(1, "
        "1);"
        "CREATE INDEX i ON journal(subject, type COLLATE NOCASE); ANALYZE; CREATE VIEW v AS SELECT 1"));
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(journal.DeleteRecord(1), 1);
    }
    EXPECT_EQ(RawStore(Path()).Integer("SELECT count(*) FROM notes"), 1);
    ExpectUsable(0);
}

// The identifiers are used up: a new entry is refused, all else goes on.
TEST_F(Opening, TakesAStoreWhoseIdentifiersAreUsedUp)
{
    for (const char* last : {"4294967295", "9223372036854775807"}) {
        DeleteFileW(Path().c_str());
        const CEOID id = MakeStore();
        ASSERT_TRUE(RawStore(Path()).Run(std::string("UPDATE sqlite_sequence SET seq = ") + last));
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(AddEntry(journal, L"new"), 0u);
        EXPECT_EQ(journal.RecordCount(), 1u);
        EXPECT_EQ(Sent().Text(kSubject, L"changed").Write(journal, id), id);
    }
}

class ReadOnlyStore : public Opening {
  protected:
    void SetUp() override
    {
        m_id = MakeStore();
        ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    }
    void TearDown() override { SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL); }
    CEOID m_id = 0;
};

TEST_F(ReadOnlyStore, IsReadAndNotWritten)
{
    const std::string before = ReadFileBytes(Path());
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(journal.RecordCount(), 1u);
        EXPECT_STREQ(journal.GetSubject(m_id), L"kept");
        EXPECT_EQ(AddEntry(journal, L"new"), 0u);
        EXPECT_EQ(Sent().Text(kSubject, L"new").Write(journal, m_id), 0u);
        EXPECT_EQ(journal.DeleteRecord(m_id), 0);
        EXPECT_STREQ(journal.GetSubject(m_id), L"kept");
        EXPECT_EQ(journal.RecordCount(), 1u);
        DbCategories categories;
        ASSERT_EQ(categories.Open(), 1);
        EXPECT_EQ(AddCategory(categories, L"new"), 0u);
        EXPECT_EQ(categories.Reset(), 0);
        CeDBase::BulkScope bulk(journal);
        EXPECT_EQ(AddEntry(journal, L"new"), 0u);
        EXPECT_EQ(bulk.Commit(), 0);
    }
    EXPECT_EQ(ReadFileBytes(Path()), before);
    EXPECT_FALSE(Exists(Beside(L"-wal")));
    EXPECT_FALSE(Exists(Beside(L"-shm")));
}

TEST_F(ReadOnlyStore, MayHaveAnyName)
{
    const std::wstring path = Path() + L".50%41 #1 \u00e4.db";
    ASSERT_TRUE(CopyFileW(Path().c_str(), path.c_str(), TRUE));
    SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_STREQ(journal.GetSubject(m_id), L"kept");
    }
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(Opening, ReadsAFileThatAnotherProgramLetsBeReadOnly)
{
    const CEOID id = MakeStore();
    HANDLE file =
        CreateFileW(Path().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_STREQ(journal.GetSubject(id), L"kept");
        EXPECT_EQ(AddEntry(journal, L"new"), 0u);
    }
    CloseHandle(file);
    ExpectUsable(1);
}

TEST_F(Opening, TriggersOfOtherToolsDoNotRun)
{
    MakeStore();
    ASSERT_TRUE(
        RawStore(Path()).Run("CREATE TRIGGER t AFTER INSERT ON journal BEGIN DELETE FROM journal; END"));
    ExpectUsable(1);
    EXPECT_EQ(RawStore(Path()).Integer("SELECT count(*) FROM journal"), 2);
}

} // namespace
