// Opening stores, and what is done with one that is open.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <fstream>
#include <sstream>

#include "mervane/store_header.h"
#include "mervane/store_path.h"
#include "open_fixture.h"
#include "support/file_faults.h"
#include "support/test_drive.h"

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

BOOL WINAPI NoLongIdentity(HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID, DWORD)
{
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

// As on a stick, whose file system knows no long ones.
TEST_F(Opening, TellsAnotherFileInItsPlaceByAShortIdentity)
{
    MakeStore();
    const std::wstring other = Path() + L".other", away = Path() + L".away";
    ASSERT_TRUE(CopyFileW(Path().c_str(), other.c_str(), TRUE));
    const ImportWatch<decltype(&GetFileInformationByHandleEx)> watch(&__imp_GetFileInformationByHandleEx,
                                                                     NoLongIdentity);
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_NE(AddEntry(journal, L"before"), 0u);
    ASSERT_TRUE(MoveUnix(Path(), away));
    ASSERT_TRUE(MoveUnix(other, Path()));
    EXPECT_EQ(AddEntry(journal, L"elsewhere"), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::OtherFile);
    ASSERT_TRUE(MoveUnix(away, Path()));
    EXPECT_NE(AddEntry(journal, L"after"), 0u);
    EXPECT_EQ(journal.RecordCount(), 3u);
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
        ASSERT_TRUE(MoveUnix(Path(), away));
        EXPECT_EQ(AddEntry(journal, L"nowhere"), 0u);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::Unreachable);
        ASSERT_TRUE(MoveUnix(other, Path()));
        EXPECT_EQ(AddEntry(journal, L"elsewhere"), 0u);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::OtherFile);
        CeDBase::BulkScope bulk(journal);
        (void)AddEntry(journal, L"bulk");
        EXPECT_EQ(bulk.Commit(), 0);
        EXPECT_NE(bulk.Trouble(), StoreTrouble::None);
        EXPECT_EQ(journal.RecordCount(), 2u);
        // Put back, it is the journal again.
        ASSERT_TRUE(MoveUnix(away, Path()));
        EXPECT_NE(AddEntry(journal, L"after"), 0u);
    }
    ExpectUsable(3);
}

// Somebody has moved the store away with all that belongs to it, and works on another one in its place.
TEST_F(Opening, LeavesTheLogOfAnotherStoreInItsPlace)
{
    MakeStore();
    const std::wstring away = Path() + L".away";
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        for (const wchar_t* suffix : {L"", L"-wal"})
            ASSERT_TRUE(MoveUnix(Beside(suffix), away + suffix));
        ASSERT_TRUE(WriteFileBytes(Path(), "another store"));
        ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), "and its log"));
    }
    EXPECT_EQ(ReadFileBytes(Path()), "another store");
    EXPECT_EQ(ReadFileBytes(Beside(L"-wal")), "and its log");
    EXPECT_EQ(RawStore(away).Integer("SELECT count(*) FROM journal"), 1);
    for (const wchar_t* suffix : {L"", L"-wal", L"-shm"})
        DeleteFileW((away + suffix).c_str());
}

constexpr const char* kMuchMore =
    "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 300) "
    "INSERT INTO journal(subject, body) SELECT 'later', hex(zeroblob(200)) FROM n";

// The file stays the same one, and so does what it says it is.
TEST_F(Opening, RefusesToWriteOnceAnotherStoreIsCopiedIntoItsFile)
{
    MakeStore();
    const std::wstring backup = Path() + L".backup", done = Path() + L".done";
    ASSERT_TRUE(CopyFileW(Path().c_str(), backup.c_str(), TRUE));
    ASSERT_TRUE(RawStore(Path()).Run(kMuchMore));
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        ASSERT_NE(AddEntry(journal, L"before"), 0u);
        ASSERT_TRUE(RunUnix(L"sh -c \"cat " + UnixPath(backup) + L" > " + UnixPath(Path()) + L"; touch " +
                                UnixPath(done) + L"\"",
                            [&] { return Exists(done); }));
        EXPECT_EQ(AddEntry(journal, L"into a mixture"), 0u);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::OtherFile);
    }
    EXPECT_TRUE(Exists(Beside(L"-wal"))) << "which is not brought into the backup";
    EXPECT_TRUE(ReadFileBytes(Path()) == ReadFileBytes(backup));
    DeleteFileW(backup.c_str());
    DeleteFileW(done.c_str());
}

// The program that wrote the log has it open and is not asked.
TEST_F(Opening, RefusesAStoreThatWasWrittenOverUnderAnotherProgram)
{
    MakeStore();
    const std::string backup = ReadFileBytes(Path());
    RawStore other(Path());
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(other.Run(kMuchMore));
        ASSERT_TRUE(other.Run("PRAGMA wal_checkpoint"));
    }
    ASSERT_TRUE(other.Run("INSERT INTO journal(subject) VALUES('in the log')"));
    ASSERT_TRUE(WriteFileBytes(Path(), backup));
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::OddLog);
}

// Somebody brings the log into the mixture: that makes it no better.
TEST_F(Opening, RefusesToWriteAlsoOnceTheLogIsBroughtIntoAnotherStore)
{
    MakeStore();
    const std::string backup = ReadFileBytes(Path());
    ASSERT_TRUE(RawStore(Path()).Run("INSERT INTO journal(body) VALUES(hex(zeroblob(10000)))"));
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_NE(AddEntry(journal, L"before"), 0u);
    RawStore tool(Path());
    ASSERT_EQ(tool.Integer("SELECT count(*) FROM journal"), 3);
    ASSERT_TRUE(WriteFileBytes(Path(), backup));
    EXPECT_EQ(AddEntry(journal, L"into a mixture"), 0u);
    EXPECT_EQ(sqlite3_wal_checkpoint(tool.Handle(), nullptr), SQLITE_OK);
    EXPECT_EQ(AddEntry(journal, L"into a mixture"), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::OtherFile);
}

// Of the log that a killed program has left, too.
TEST_F(Opening, KnowsTheFileAfterAnotherProgramWasKilled)
{
    MakeStore();
    const std::string backup = ReadFileBytes(Path());
    ASSERT_TRUE(RawStore(Path()).Run(kMuchMore));
    {
        RawStore killed(Path());
        ASSERT_TRUE(killed.Run("INSERT INTO journal(subject) VALUES('in the log')"));
        for (const wchar_t* suffix : {L"", L"-wal"})
            ASSERT_TRUE(CopyFileW(Beside(suffix).c_str(), (Path() + L".left" + suffix).c_str(), TRUE));
    }
    for (const wchar_t* suffix : {L"", L"-wal"})
        ASSERT_TRUE(MoveFileExW((Path() + L".left" + suffix).c_str(), Beside(suffix).c_str(),
                                MOVEFILE_REPLACE_EXISTING));
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(journal.RecordCount(), 302u);
    ASSERT_NE(AddEntry(journal, L"before"), 0u);
    ASSERT_TRUE(WriteFileBytes(Path(), backup));
    EXPECT_EQ(AddEntry(journal, L"into a mixture"), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::OtherFile);
}

// What another program brings in from the log is no other store.
TEST_F(Opening, WritesOnAfterALogWasBroughtIn)
{
    MakeStore();
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    for (const char* mode : {"PASSIVE", "FULL", "RESTART", "TRUNCATE"}) {
        ASSERT_NE(Sent().Text(kBody, std::wstring(20'000, L'a')).Write(journal), 0u);
        ASSERT_TRUE(RawStore(Path()).Run(std::string("PRAGMA wal_checkpoint(") + mode + ")"));
        EXPECT_NE(AddEntry(journal, L"behind it"), 0u) << mode;
    }
}

std::vector<std::wstring> g_opened;
decltype(&CreateFileW) g_createFile = nullptr;

HANDLE WINAPI WatchedCreateFile(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES attributes,
                                DWORD disposition, DWORD flags, HANDLE model)
{
    g_opened.emplace_back(name);
    return g_createFile(name, access, share, attributes, disposition, flags, model);
}

// Where a file has locks, some systems keep what was opened until they are given back: in the end a commit
// could open nothing more.
TEST_F(Opening, IsNotDoneAnewForACommit)
{
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_NE(AddEntry(journal, L"which makes the log"), 0u);
    g_createFile = __imp_CreateFileW;
    g_opened.clear();
    {
        const ImportWatch<decltype(&CreateFileW)> watch(&__imp_CreateFileW, WatchedCreateFile);
        ASSERT_NE(AddEntry(journal, L"one more"), 0u);
    }
    EXPECT_FALSE(g_opened.empty()) << "it is looked whether the file is in its place";
    for (const std::wstring& path : g_opened)
        EXPECT_NE(mervane::PathKey(path), mervane::PathKey(Path()));
}

TEST_F(Opening, RefusesToWriteOnceALinkLeadsElsewhere)
{
    MakeStore();
    const std::wstring other = Path() + L".other", link = Path() + L".link.db", gone = Path() + L".gone";
    ASSERT_TRUE(CopyFileW(Path().c_str(), other.c_str(), TRUE));
    ASSERT_TRUE(RunUnix(L"ln -s " + UnixPath(Path()) + L" " + UnixPath(link), [&] { return Exists(link); }));
    SetEnvironmentVariableW(L"MERVANE_STORE", link.c_str());
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        ASSERT_NE(AddEntry(journal, L"before"), 0u);
        ASSERT_TRUE(RunUnix(L"sh -c \"ln -sf " + UnixPath(other) + L" " + UnixPath(link) + L"; touch " +
                                UnixPath(gone) + L"\"",
                            [&] { return Exists(gone); }));
        EXPECT_EQ(AddEntry(journal, L"nowhere"), 0u);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::OtherFile);
        DbCategories categories;
        ASSERT_TRUE(categories.Open()) << "those of the store that is open";
        EXPECT_EQ(Sent().Text(kCategoriesKey, L"Elsewhere").Write(categories, 0), 0u);
    }
    for (const std::wstring& file : {other, gone})
        EXPECT_TRUE(DeleteFileW(file.c_str()));
    EXPECT_TRUE(RunUnix(L"rm " + UnixPath(link) + L" " + UnixPath(Path()), [&] { return !Exists(Path()); }));
}

// The folder that is made first lies below a link: the name leads to the same place before and afterwards.
TEST_F(Opening, FindsTheSamePlaceBeforeItsFolderIsMade)
{
    const std::wstring folder = Path() + L".folder", link = Path() + L".link";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    ASSERT_TRUE(RunUnix(L"ln -s " + UnixPath(folder) + L" " + UnixPath(link), [&] { return Exists(link); }));
    const std::wstring name = link + L"\\a\\b\\journal.db";
    SetEnvironmentVariableW(L"MERVANE_STORE", name.c_str());
    const std::wstring before = mervane::PathKey(mervane::StorePath());
    EXPECT_EQ(before, mervane::PathKey(folder + L"\\a\\b\\journal.db"));
    ASSERT_TRUE(mervane::MakeFolderOf(name));
    SetEnvironmentVariableW(L"MERVANE_STORE", nullptr);
    (void)mervane::StorePath(); // of another name
    SetEnvironmentVariableW(L"MERVANE_STORE", name.c_str());
    EXPECT_EQ(mervane::PathKey(mervane::StorePath()), before);
    EXPECT_TRUE(RunUnix(L"rm " + UnixPath(link), [&] { return !Exists(link); }));
    for (const wchar_t* below : {L"\\a\\b", L"\\a", L""})
        EXPECT_TRUE(RemoveDirectoryW((folder + below).c_str()));
}

// A link of which the folder tells, and whose end does not answer.
class DeadLink {
  public:
    explicit DeadLink(const std::wstring& path) { s_path = path; }

  private:
    static bool IsIt(LPCWSTR path) { return (path + std::wstring(L"\\")).starts_with(s_path + L"\\"); }
    static HANDLE WINAPI Open(LPCWSTR path, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                              DWORD how, DWORD flags, HANDLE like)
    {
        if (!IsIt(path))
            return s_open(path, access, share, security, how, flags, like);
        SetLastError(ERROR_BAD_NETPATH);
        return INVALID_HANDLE_VALUE;
    }
    static DWORD WINAPI Ask(LPCWSTR path)
    {
        if (path == s_path)
            return FILE_ATTRIBUTE_REPARSE_POINT;
        if (!IsIt(path))
            return s_ask(path);
        SetLastError(ERROR_PATH_NOT_FOUND);
        return INVALID_FILE_ATTRIBUTES;
    }

    static inline std::wstring s_path;
    static inline decltype(&CreateFileW) s_open = __imp_CreateFileW;
    static inline decltype(&GetFileAttributesW) s_ask = __imp_GetFileAttributesW;
    const ImportWatch<decltype(&CreateFileW)> m_opening{&__imp_CreateFileW, Open};
    const ImportWatch<decltype(&GetFileAttributesW)> m_asking{&__imp_GetFileAttributesW, Ask};
};

// Opened by the link's name it would have its log beside the link, as long as the program runs.
TEST_F(Opening, RefusesALinkToWhatDoesNotAnswer)
{
    MakeStore();
    const std::wstring link = Path() + L".link.db";
    ASSERT_TRUE(RunUnix(L"ln -s " + UnixPath(Path()) + L" " + UnixPath(link), [&] { return Exists(link); }));
    SetEnvironmentVariableW(L"MERVANE_STORE", link.c_str());
    {
        const DeadLink dead(link);
        EXPECT_FALSE(mervane::FollowedStorePath());
        EXPECT_EQ(mervane::StorePath(), link);
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::Unreachable);
    }
    // It answers again.
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_NE(AddEntry(journal, L"s"), 0u);
    EXPECT_TRUE(Exists(Beside(L"-wal")));
    EXPECT_FALSE(Exists(link + L"-wal"));
    journal.Close();
    EXPECT_TRUE(DeleteFileW(link.c_str()));
}

// A new store would be made once it answers, or another path be taken for the same store's.
TEST_F(Opening, RefusesAFolderThatIsALinkToWhatDoesNotAnswer)
{
    const std::wstring link = Path() + L".link";
    SetEnvironmentVariableW(L"MERVANE_STORE", (link + L"\\below\\journal.db").c_str());
    {
        const DeadLink dead(link);
        EXPECT_FALSE(mervane::FollowedStorePath());
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::Unreachable);
    }
    EXPECT_FALSE(Exists(link));
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

TEST_F(Opening, TriggersOfOtherToolsDoNotRun)
{
    MakeStore();
    ASSERT_TRUE(
        RawStore(Path()).Run("CREATE TRIGGER t AFTER INSERT ON journal BEGIN DELETE FROM journal; END"));
    ExpectUsable(1);
    EXPECT_EQ(RawStore(Path()).Integer("SELECT count(*) FROM journal"), 2);
}

} // namespace
