// What lies beside a store's file when it is opened.
#include <gtest/gtest.h>

#include <vector>

#include "open_fixture.h"
#include "support/fault_vfs.h"
#include "support/held_file.h"
#include "support/import_watch.h"

namespace {

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
    Leave("PRAGMA user_version = 99099");
    ExpectRefused(StoreTrouble::NewerVersion);
    // The newer program loses nothing.
    EXPECT_EQ(RawStore(Path()).Integer("PRAGMA user_version"), 99099);
}

TEST_F(LeftLog, OfANewerProgramKeepsItsIndex)
{
    Leave("PRAGMA user_version = 99099");
    const std::string index(32'768, '\x55');
    ASSERT_TRUE(WriteFileBytes(Beside(L"-shm"), index));
    ExpectRefused(StoreTrouble::NewerVersion);
    EXPECT_TRUE(ReadFileBytes(Beside(L"-shm")) == index);
}

TEST_F(LeftLog, OfANewerProgramAtWorkIsRefused)
{
    MakeStore();
    RawStore newer(Path());
    ASSERT_TRUE(newer.Run("PRAGMA wal_autocheckpoint = 0; PRAGMA user_version = 99099"));
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

// Where the file is refused for a reason of its own, all stays as it was found.
TEST_F(LeftLog, BesideAFileThatIsRefusedKeepsItsName)
{
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run("DROP TABLE contacts"));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), std::string(5000, 'x')));
    ExpectRefused();
    EXPECT_TRUE(SetAside(Beside(L"-wal")).empty());
}

TEST_F(LeftJournal, BesideAFileThatIsRefusedKeepsItsName)
{
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run("DROP TABLE contacts"));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), "Dear diary"));
    DbJournal opened;
    EXPECT_EQ(opened.Open(nullptr), 0);
    EXPECT_EQ(opened.Trouble(), StoreTrouble::NotAStore);
    EXPECT_TRUE(SetAside(Beside(L"-journal")).empty());
    EXPECT_EQ(ReadFileBytes(Beside(L"-journal")), "Dear diary");
}

TEST_F(LeftLog, ThatIsHeldForAMomentIsSetAside)
{
    MakeStore();
    const std::string log(5000, 'x');
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), log));
    {
        const HeldFile held(Beside(L"-wal"), 3, FILE_SHARE_READ | FILE_SHARE_WRITE);
        ExpectUsable(1);
        EXPECT_EQ(held.Waits(), 3);
    }
    ExpectSetAside(Beside(L"-wal"), log);
}

// A person is to know of it, once.
TEST_F(LeftLog, ThatIsSetAsideIsToldOnce)
{
    MakeStore();
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_TRUE(journal.TakeSetAside().empty());
    }
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), std::string(5000, 'x')));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-journal"), "no journal"));
    DbJournal journal;
    DbContacts contacts;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_EQ(contacts.Open(), 1);
    const std::vector<RenamedFile> files = contacts.TakeSetAside();
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].path, Beside(L"-journal"));
    EXPECT_EQ(files[1].path, Beside(L"-wal"));
    for (const RenamedFile& file : files)
        ExpectSetAside(file.path, ReadFileBytes(file.keptAs));
    EXPECT_TRUE(journal.TakeSetAside().empty());
    EXPECT_TRUE(DbJournal().TakeSetAside().empty()) << "it is closed";
}

decltype(&MoveFileExW) g_move = nullptr;

BOOL WINAPI PutNothingBack(LPCWSTR from, LPCWSTR to, DWORD flags)
{
    if (std::wstring_view(from).find(L".set-aside-") == std::wstring_view::npos)
        return g_move(from, to, flags);
    SetLastError(ERROR_ALREADY_EXISTS);
    return FALSE;
}

// Another program has made a file of that name meanwhile.
TEST_F(LeftLog, ThatCannotGetItsNameBackIsTold)
{
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run("ALTER TABLE contacts RENAME TO people"));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), std::string(5000, 'x')));
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_TRUE(journal.TakeSetAside().empty()) << "it has its name again";
    EXPECT_TRUE(SetAside(Beside(L"-wal")).empty());
    {
        g_move = __imp_MoveFileExW;
        const ImportWatch<decltype(&MoveFileExW)> watch(&__imp_MoveFileExW, PutNothingBack);
        EXPECT_EQ(journal.Open(nullptr), 0);
    }
    EXPECT_EQ(journal.Trouble(), StoreTrouble::NotAStore);
    const std::vector<RenamedFile> files = journal.TakeSetAside();
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0].path, Beside(L"-wal"));
    EXPECT_EQ(ReadFileBytes(files[0].keptAs), std::string(5000, 'x'));
    EXPECT_TRUE(journal.TakeSetAside().empty()) << "once";
}

// Whatever an opening fails in: what has another name afterwards is told.
TEST_F(LeftLog, ThatHasAnotherNameIsToldWhereTheOpeningFails)
{
    MakeStore();
    const std::string log(5000, 'x');
    FaultVfs faults;
    int told = 0;
    for (const FileCall call : {FileCall::Read, FileCall::ShmMap, FileCall::ShmLock}) {
        bool fired = true;
        for (int n = 1; fired; ++n) {
            SCOPED_TRACE(std::string(NameOf(call)) + " " + std::to_string(n));
            ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), log));
            faults.FailNth(call, n);
            DbJournal journal;
            const bool isOpen = journal.Open(nullptr) != 0;
            fired = faults.HasFired();
            faults.FailNone();
            std::vector<std::wstring> names;
            for (const RenamedFile& file : journal.TakeSetAside())
                names.push_back(file.keptAs);
            const std::vector<std::wstring> found = SetAside(Beside(L"-wal"));
            EXPECT_EQ(names, found);
            told += !isOpen && !found.empty();
            journal.Close();
            for (const std::wstring& file : found)
                ASSERT_TRUE(DeleteFileW(file.c_str()));
        }
    }
    EXPECT_GT(told, 0) << "some fail once the log has another name";
}

} // namespace
