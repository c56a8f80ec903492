// Opening and refusing stores.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

#include "mervane/store_header.h"
#include "mervane/store_path.h"
#include "records.h"
#include "support/test_drive.h"
#include "support/test_store.h"
#include "util/owners.h"

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
    void ExpectRefused(StoreTrouble trouble = StoreTrouble::NotAStore)
    {
        const std::string before = ReadFileBytes(Path());
        const std::string log = ReadFileBytes(Beside(L"-wal"));
        const bool hadLog = Exists(Beside(L"-wal")), hadMemory = Exists(Beside(L"-shm"));
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_FALSE(journal.IsOpen());
        EXPECT_EQ(journal.Trouble(), trouble);
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

TEST_F(Opening, RefusesAFolderInItsPlace)
{
    ASSERT_TRUE(CreateDirectoryW(Path().c_str(), nullptr));
    ExpectRefused(StoreTrouble::IsFolder);
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
        const bool isNewer = version == 2003 || version == 3003 || version == 99'003;
        ExpectRefused(isNewer ? StoreTrouble::NewerVersion : StoreTrouble::NotAStore);
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

// A tool may have made the tables anew, so that a write does what the program knows nothing of.
TEST_F(Opening, RefusesTablesThatAreNotItsOwn)
{
    const std::pair<const char*, const char*> changes[] = {
        {"contacts BLOB", "contacts BLOB, big BLOB AS (zeroblob(1000000000)) VIRTUAL"},
        {"contacts BLOB", "contacts BLOB, CHECK(priority < 2)"},
        {"contacts BLOB", "contacts BLOB REFERENCES contacts(oid) ON DELETE CASCADE"},
        {"contacts BLOB", "contacts BLOB UNIQUE ON CONFLICT REPLACE"},
        {"contacts BLOB", "contacts BLOB DEFAULT (zeroblob(1000000000))"},
        {"contacts BLOB", "contacts BLOB, mood TEXT"},
        {"subject TEXT", "subject TEXT COLLATE NOCASE"},
        {"AUTOINCREMENT", ""},
    };
    for (const auto& [was, is] : changes) {
        DeleteFileW(Path().c_str());
        MakeStore();
        std::string sql = RawStore(Path()).Text("SELECT sql FROM sqlite_schema WHERE name = 'journal'");
        ASSERT_NE(sql.find(was), std::string::npos);
        sql.replace(sql.find(was), strlen(was), is);
        ASSERT_TRUE(RawStore(Path()).Run("DROP TABLE journal; " + sql)) << sql;
        ExpectRefused();
    }
}

TEST_F(Opening, RefusesIndexesThatStandInAWritesWay)
{
    for (const char* index :
         {"CREATE UNIQUE INDEX i ON journal(subject)", "CREATE INDEX i ON journal(abs(priority))",
          "CREATE INDEX i ON journal(date) WHERE subject IS NOT NULL"}) {
        DeleteFileW(Path().c_str());
        MakeStore();
        ASSERT_TRUE(RawStore(Path()).Run(index));
        ExpectRefused();
    }
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
    ExpectRefused(StoreTrouble::NewerVersion);
    // The newer program loses nothing.
    EXPECT_EQ(RawStore(Path()).Integer("PRAGMA user_version"), 99003);
}

TEST_F(LeftLog, OfANewerProgramKeepsItsIndex)
{
    Leave("PRAGMA user_version = 99003");
    const std::string index(32'768, '\x55');
    ASSERT_TRUE(WriteFileBytes(Beside(L"-shm"), index));
    ExpectRefused(StoreTrouble::NewerVersion);
    EXPECT_TRUE(ReadFileBytes(Beside(L"-shm")) == index);
}

TEST_F(LeftLog, OfANewerProgramAtWorkIsRefused)
{
    MakeStore();
    RawStore newer(Path());
    ASSERT_TRUE(newer.Run("PRAGMA wal_autocheckpoint = 0; PRAGMA user_version = 99003"));
    ASSERT_FALSE(ReadFileBytes(Beside(L"-wal")).empty());
    ExpectRefused(StoreTrouble::NewerVersion);
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

std::vector<std::wstring> SetAside(const std::wstring& path)
{
    std::vector<std::wstring> found;
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW((path + L".set-aside-*").c_str(), &data);
    const std::wstring folder = path.substr(0, path.find_last_of(L'\\') + 1);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data))
        found.push_back(folder + data.cFileName);
    FindClose(search);
    return found;
}

// What SQLite would have taken for the store's is kept under another name, whole.
void ExpectSetAside(const std::wstring& path, const std::string& bytes)
{
    const auto found = SetAside(path);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(ReadFileBytes(found[0]) == bytes);
    EXPECT_TRUE(DeleteFileW(found[0].c_str()));
}

TEST_F(LeftLog, BesideABackupIsSetAside)
{
    MakeStore();
    const std::wstring backup = Path() + L".backup";
    {
        RawStore raw(Path());
        ASSERT_TRUE(raw.Run("PRAGMA wal_autocheckpoint = 0; VACUUM INTO '" +
                            std::string(backup.begin(), backup.end()) + "'"));
        for (int i = 0; i < 40; ++i)
            ASSERT_TRUE(raw.Run("INSERT INTO journal(subject, body) VALUES('later', zeroblob(3000))"));
        ASSERT_TRUE(WriteFileBytes(Path() + L".log", ReadFileBytes(Beside(L"-wal"))));
    }
    const std::string log = ReadFileBytes(Path() + L".log");
    ASSERT_TRUE(WriteFileBytes(Path(), ReadFileBytes(backup)));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), log));
    ExpectUsable(1);
    ExpectSetAside(Beside(L"-wal"), log);
    DeleteFileW(backup.c_str());
    DeleteFileW((Path() + L".log").c_str());
}

TEST_F(LeftLog, ThatIsNoLogIsSetAside)
{
    MakeStore();
    for (const std::string& bytes :
         {std::string(5000, 'x'), std::string("Dear diary, what is this doing here?")}) {
        ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), bytes));
        ExpectUsable(1);
        ExpectSetAside(Beside(L"-wal"), bytes);
        DeleteFileW(Path().c_str());
        MakeStore();
    }
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

// What a program that was killed in a transaction leaves on a drive without a log.
class LeftJournal : public Opening {
  protected:
    // The file and the journal in the midst of a change.
    void Leave(std::string* file, std::string* journal)
    {
        RawStore raw(Path());
        ASSERT_TRUE(raw.Run("PRAGMA journal_mode = DELETE; PRAGMA cache_size = 1; PRAGMA cache_spill = 1; "
                            "BEGIN; UPDATE journal SET subject = 'half done'"));
        for (int i = 0; i < 60; ++i)
            ASSERT_TRUE(raw.Run("INSERT INTO journal(subject, body) VALUES('new', zeroblob(3000))"));
        *file = ReadFileBytes(Path());
        *journal = ReadFileBytes(Beside(L"-journal"));
        ASSERT_FALSE(journal->empty());
        ASSERT_NE(journal->front(), 0);
        ASSERT_TRUE(raw.Run("ROLLBACK"));
    }
};

TEST_F(LeftJournal, OfTheStoreIsPutBack)
{
    MakeStore();
    std::string file, journal;
    Leave(&file, &journal);
    ASSERT_TRUE(WriteFileBytes(Path(), file));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), journal));
    {
        DbJournal opened;
        ASSERT_EQ(opened.Open(nullptr), 1);
        EXPECT_STREQ(opened.GetSubject(1), L"kept");
    }
    ExpectUsable(1);
    EXPECT_TRUE(SetAside(Beside(L"-journal")).empty());
}

TEST_F(LeftJournal, OfAnotherStoreIsSetAside)
{
    MakeStore();
    std::string file, journal;
    Leave(&file, &journal);
    for (int i = 0; i < 4; ++i)
        ASSERT_TRUE(RawStore(Path()).Run("INSERT INTO journal(body) VALUES(zeroblob(9000))"));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), journal));
    ExpectUsable(5);
    ExpectSetAside(Beside(L"-journal"), journal);
}

TEST_F(LeftJournal, ThatIsNoneIsSetAside)
{
    MakeStore();
    ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), "Dear diary"));
    ExpectUsable(1);
    ExpectSetAside(Beside(L"-journal"), "Dear diary");
}

TEST_F(LeftJournal, WithoutItsFileIsKept)
{
    MakeStore();
    std::string file, journal;
    Leave(&file, &journal);
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), journal));
    DbJournal opened;
    EXPECT_EQ(opened.Open(nullptr), 0);
    EXPECT_FALSE(Exists(Path()));
    EXPECT_TRUE(ReadFileBytes(Beside(L"-journal")) == journal);
}

// A sync or restore tool has put another file in the open one's place: what is saved would go nowhere.
TEST_F(Opening, RefusesToWriteOnceAnotherFileIsInItsPlace)
{
    MakeStore();
    const std::wstring other = Path() + L".other", away = Path() + L".away";
    ASSERT_TRUE(CopyFileW(Path().c_str(), other.c_str(), TRUE));
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        ASSERT_NE(AddEntry(journal, L"before"), 0u);
        ASSERT_TRUE(RunUnix(L"mv " + UnixPath(Path()) + L" " + UnixPath(away), [&] { return Exists(away); }));
        EXPECT_EQ(AddEntry(journal, L"nowhere"), 0u);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::Unreachable);
        ASSERT_TRUE(
            RunUnix(L"mv " + UnixPath(other) + L" " + UnixPath(Path()), [&] { return !Exists(other); }));
        EXPECT_EQ(AddEntry(journal, L"elsewhere"), 0u);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::OtherFile);
        CeDBase::BulkScope bulk(journal);
        (void)AddEntry(journal, L"bulk");
        EXPECT_EQ(bulk.Commit(), 0);
        EXPECT_NE(bulk.Trouble(), StoreTrouble::None);
        EXPECT_EQ(journal.RecordCount(), 2u);
        // Put back, it is the journal again.
        ASSERT_TRUE(
            RunUnix(L"mv " + UnixPath(away) + L" " + UnixPath(Path()), [&] { return !Exists(away); }));
        EXPECT_NE(AddEntry(journal, L"after"), 0u);
    }
    ExpectUsable(3);
}

TEST_F(Opening, KeepsItsLogBesideTheFileThatALinkLeadsTo)
{
    MakeStore();
    const std::wstring link = Path() + L".link.db";
    ASSERT_TRUE(RunUnix(L"ln -s " + UnixPath(Path()) + L" " + UnixPath(link), [&] { return Exists(link); }));
    SetEnvironmentVariableW(L"MERVANE_STORE", link.c_str());
    EXPECT_EQ(mervane::PathKey(mervane::StorePath()), mervane::PathKey(Path()));
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        ASSERT_NE(AddEntry(journal, L"s"), 0u);
        EXPECT_TRUE(Exists(Beside(L"-wal")));
        EXPECT_FALSE(Exists(link + L"-wal"));
    }
    EXPECT_TRUE(DeleteFileW(link.c_str()));
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
        EXPECT_EQ(journal.Trouble(), StoreTrouble::Locked);
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
    EXPECT_EQ(journal.Trouble(), StoreTrouble::Locked);
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
