// Opening and refusing stores.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "mervane/store_header.h"
#include "mervane/store_path.h"
#include "records.h"
#include "support/test_store.h"

namespace {

bool Exists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

class Opening : public testing::Test {
  protected:
    const std::wstring& Path() const { return m_store.Path(); }
    std::wstring Beside(const wchar_t* suffix) const { return Path() + suffix; }

    // A store with one entry, closed.
    CEOID MakeStore()
    {
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 1);
        return AddEntry(journal, L"kept", 5);
    }
    // Opening is refused, whatever the database, and nothing is touched.
    void ExpectRefused()
    {
        const std::string before = ReadFileBytes(Path());
        const std::string log = ReadFileBytes(Beside(L"-wal"));
        const bool hadLog = Exists(Beside(L"-wal")), hadMemory = Exists(Beside(L"-shm"));
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_FALSE(journal.IsOpen());
        DbCategories categories;
        EXPECT_EQ(categories.Open(), 0);
        EXPECT_TRUE(ReadFileBytes(Path()) == before);
        EXPECT_TRUE(ReadFileBytes(Beside(L"-wal")) == log);
        EXPECT_EQ(Exists(Beside(L"-wal")), hadLog);
        EXPECT_EQ(Exists(Beside(L"-shm")), hadMemory);
        EXPECT_FALSE(Exists(Beside(L"-journal")));
    }
    void ExpectUsable(uint32_t records)
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(journal.RecordCount(), records);
        EXPECT_NE(AddEntry(journal, L"more"), 0u);
    }

    TestStore m_store;
};

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

TEST_F(Opening, RefusesAFolderInItsPlace)
{
    ASSERT_TRUE(CreateDirectoryW(Path().c_str(), nullptr));
    ExpectRefused();
    EXPECT_TRUE(RemoveDirectoryW(Path().c_str()));
}

TEST_F(Opening, RefusesAFileInAFoldersPlace)
{
    ASSERT_TRUE(WriteFileBytes(Path(), "x"));
    SetEnvironmentVariableW(L"MERVANE_STORE", (Path() + L"\\journal.db").c_str());
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_EQ(ReadFileBytes(Path()), "x");
}

TEST_F(Opening, RefusesWhatIsNoStore)
{
    MakeStore();
    const std::string good = ReadFileBytes(Path());
    std::string otherMagic = good, otherProgram = good;
    otherMagic[3] = 'x';
    otherProgram[70] = 'x';
    for (const std::string& bytes : {std::string("x"), std::string("Dear diary, ..."),
                                     std::string(5000, '\0'), good.substr(0, 99), otherMagic, otherProgram}) {
        ASSERT_TRUE(WriteFileBytes(Path(), bytes));
        ExpectRefused();
    }
}

TEST_F(Opening, RefusesAnotherProgramsDatabase)
{
    for (const char* sql :
         {"CREATE TABLE t(x)", "PRAGMA user_version = 1001", "PRAGMA application_id = 5",
          "CREATE TABLE journal(oid INTEGER PRIMARY KEY, date)", "PRAGMA journal_mode = WAL; VACUUM"}) {
        DeleteFileW(Path().c_str());
        ASSERT_TRUE(RawStore(Path()).Run(sql));
        ExpectRefused();
    }
}

TEST_F(Opening, RefusesVersionsThatAreNotForThisProgram)
{
    MakeStore();
    // 2003: of this schema, but for newer programs only.
    for (const int version : {0, 1, 2, 99, 999, 1000, 2000, 2003, 3003, 99'003, -1, -1001, 2'000'000'000}) {
        ASSERT_TRUE(RawStore(Path()).Run("PRAGMA user_version = " + std::to_string(version)));
        ExpectRefused();
    }
}

TEST_F(Opening, UsesANewerStoreThatAllowsIt)
{
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run("ALTER TABLE journal ADD COLUMN mood TEXT; PRAGMA user_version = 7001"));
    ExpectUsable(1);
    EXPECT_EQ(RawStore(Path()).Integer("PRAGMA user_version"), 7001);
}

TEST_F(Opening, RefusesAStoreWithoutItsTables)
{
    for (const char* harm : {"DROP TABLE contacts", "ALTER TABLE journal DROP COLUMN body",
                             "DROP TABLE categories", "ALTER TABLE journal RENAME TO diary"}) {
        DeleteFileW(Path().c_str());
        MakeStore();
        ASSERT_TRUE(RawStore(Path()).Run(harm));
        ExpectRefused();
    }
}

// What a killed program leaves: a file, and a log that was not brought into it.
class LeftLog : public Opening {
  protected:
    void Leave(const char* sql)
    {
        MakeStore();
        std::string file, log;
        {
            RawStore raw(Path());
            ASSERT_TRUE(raw.Run(std::string("PRAGMA wal_autocheckpoint = 0; ") + sql));
            file = ReadFileBytes(Path());
            log = ReadFileBytes(Beside(L"-wal"));
        }
        ASSERT_FALSE(log.empty());
        ASSERT_TRUE(WriteFileBytes(Path(), file));
        ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), log));
    }
};

TEST_F(LeftLog, IsReadOnOpening)
{
    Leave("INSERT INTO journal(subject) VALUES('in the log only')");
    ExpectUsable(2);
}

TEST_F(LeftLog, OfANewerProgramIsRefused)
{
    Leave("PRAGMA user_version = 99003");
    ExpectRefused();
    // The newer program loses nothing.
    EXPECT_EQ(RawStore(Path()).Integer("PRAGMA user_version"), 99003);
}

TEST_F(LeftLog, OfANewerProgramKeepsItsIndex)
{
    Leave("PRAGMA user_version = 99003");
    const std::string index(32'768, '\x55');
    ASSERT_TRUE(WriteFileBytes(Beside(L"-shm"), index));
    ExpectRefused();
    EXPECT_TRUE(ReadFileBytes(Beside(L"-shm")) == index);
}

TEST_F(LeftLog, OfANewerProgramAtWorkIsRefused)
{
    MakeStore();
    RawStore newer(Path());
    ASSERT_TRUE(newer.Run("PRAGMA wal_autocheckpoint = 0; PRAGMA user_version = 99003"));
    ASSERT_FALSE(ReadFileBytes(Beside(L"-wal")).empty());
    ExpectRefused();
    EXPECT_TRUE(newer.Run("INSERT INTO journal(subject) VALUES('goes on')"));
}

TEST_F(LeftLog, OfAStoreWithoutItsTablesIsRefused)
{
    Leave("DROP TABLE contacts");
    ExpectRefused();
}

TEST_F(LeftLog, WithDamageLosesOnlyWhatIsBehindIt)
{
    Leave("INSERT INTO journal(subject) VALUES('in the log only')");
    std::string log = ReadFileBytes(Beside(L"-wal"));
    log[40] = static_cast<char>(log[40] ^ 0x55);
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), log));
    ExpectUsable(1);
}

// What was saved last is in the log alone: a new store in its place would do away with it.
TEST_F(LeftLog, WithoutItsFileIsKept)
{
    Leave("INSERT INTO journal(subject) VALUES('in the log only')");
    const std::string file = ReadFileBytes(Path()), log = ReadFileBytes(Beside(L"-wal"));
    for (const bool isEmpty : {false, true}) {
        ASSERT_TRUE(DeleteFileW(Path().c_str()));
        if (isEmpty) {
            ASSERT_TRUE(WriteFileBytes(Path(), ""));
        }
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_EQ(Exists(Path()), isEmpty);
        EXPECT_TRUE(ReadFileBytes(Path()).empty());
        EXPECT_TRUE(ReadFileBytes(Beside(L"-wal")) == log);
        // Put back where it was, the file has its log again.
        ASSERT_TRUE(WriteFileBytes(Path(), file));
    }
    ExpectUsable(2);
}

TEST_F(LeftLog, OfNoLengthIsNone)
{
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), ""));
    ExpectUsable(0);
}

TEST_F(LeftLog, OfAReadOnlyFileIsReadAndKept)
{
    Leave("INSERT INTO journal(subject) VALUES('in the log only')");
    const std::string file = ReadFileBytes(Path()), log = ReadFileBytes(Beside(L"-wal"));
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(journal.RecordCount(), 2u);
        EXPECT_STREQ(journal.GetSubject(2), L"in the log only");
        EXPECT_EQ(AddEntry(journal, L"new"), 0u);
        EXPECT_EQ(Sent().Text(kSubject, L"new").Write(journal, 2), 0u);
        EXPECT_STREQ(journal.GetSubject(2), L"in the log only");
    }
    EXPECT_TRUE(ReadFileBytes(Path()) == file);
    EXPECT_TRUE(ReadFileBytes(Beside(L"-wal")) == log);
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL));
    ExpectUsable(2);
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

TEST_F(Opening, RefusesAStoreThatAnotherToolKeepsLocked)
{
    MakeStore();
    {
        RawStore raw(Path());
        ASSERT_TRUE(
            raw.Run("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = DELETE; BEGIN EXCLUSIVE"));
        const std::string before = ReadFileBytes(Path());
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_TRUE(ReadFileBytes(Path()) == before);
    }
    ExpectUsable(1);
}

TEST_F(Opening, RefusesAFileThatAnotherProgramKeepsToItself)
{
    MakeStore();
    HANDLE file = CreateFileW(Path().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
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
