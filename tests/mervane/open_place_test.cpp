// The place of a store: which file is meant, by whatever link it is reached, and whether it is still that
// file.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "mervane/file/store_path.h"
#include "open_fixture.h"
#include "support/import_watch.h"
#include "support/test_drive.h"

namespace {

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

} // namespace
