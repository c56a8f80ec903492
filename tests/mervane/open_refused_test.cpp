// Stores that are refused: why, and that nothing of them is touched.
#include <gtest/gtest.h>

#include <optional>

#include <algorithm>
#include <utility>

#include "mervane/file/store_path.h"
#include "mervane/sqlite/store_header.h"
#include "open_fixture.h"
#include "support/import_watch.h"
#include "watched_files.h"

namespace {

TEST_F(Opening, RefusesAFolderInItsPlace)
{
    ASSERT_TRUE(CreateDirectoryW(Path().c_str(), nullptr));
    ExpectRefused(StoreTrouble::IsFolder);
    EXPECT_TRUE(RemoveDirectoryW(Path().c_str()));
}

// By each name it would have a log that the other does not know.
TEST_F(Opening, RefusesAFileWithASecondName)
{
    MakeStore();
    const std::wstring other = Path() + L".other";
    ASSERT_TRUE(CreateHardLinkW(other.c_str(), Path().c_str(), nullptr));
    ExpectRefused(StoreTrouble::SeveralNames);
    EXPECT_TRUE(DeleteFileW(other.c_str()));
    ExpectUsable(1);
}

decltype(&GetVolumeInformationByHandleW) g_volume = nullptr;

BOOL WINAPI TellReadOnlyVolume(HANDLE file, LPWSTR name, DWORD size, LPDWORD serial, LPDWORD longest,
                               LPDWORD flags, LPWSTR system, DWORD systemSize)
{
    const BOOL told = g_volume(file, name, size, serial, longest, flags, system, systemSize);
    *flags |= FILE_READ_ONLY_VOLUME;
    return told;
}

// Nothing is written then, under whichever name.
TEST_F(Opening, ReadsAFileWithASecondNameWhereItIsReadOnly)
{
    const CEOID id = MakeStore();
    const std::wstring other = Path() + L".other";
    ASSERT_TRUE(CreateHardLinkW(other.c_str(), Path().c_str(), nullptr));
    const std::string before = ReadFileBytes(Path());
    g_volume = __imp_GetVolumeInformationByHandleW;
    for (const bool byMedium : {false, true}) {
        std::optional<ImportWatch<decltype(&GetVolumeInformationByHandleW)>> watch;
        if (byMedium)
            watch.emplace(&__imp_GetVolumeInformationByHandleW, TellReadOnlyVolume);
        else
            ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1) << byMedium;
        EXPECT_STREQ(journal.GetSubject(id), L"kept");
        EXPECT_EQ(AddEntry(journal, L"new"), 0u);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::ReadOnly);
        SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    EXPECT_TRUE(ReadFileBytes(Path()) == before);
    for (const wchar_t* suffix : {L"-wal", L"-shm"})
        EXPECT_FALSE(Exists(Beside(suffix)));
    EXPECT_TRUE(DeleteFileW(other.c_str()));
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
    const auto expectRefused = [this](int64_t version, StoreTrouble trouble) {
        ASSERT_TRUE(RawStore(Path()).Run("PRAGMA user_version = " + std::to_string(version)));
        ExpectRefused(trouble);
    };
    for (const int version : {0, 1, 2, 99, 999, 1000, 2000, -1, -1001, 2'000'000'000})
        expectRefused(version, StoreTrouble::NotAStore);
    const int64_t next = mervane::kSchemaVersion + 1;
    // The first one is of this schema.
    for (const int64_t version : {mervane::kSchemaVersion * 1000 + next, next * 1000 + next, 99'000 + next})
        expectRefused(version, StoreTrouble::NewerVersion);
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
        {")", ", big BLOB AS (zeroblob(1000000000)) VIRTUAL)"},
        {")", ", CHECK(priority < 2))"},
        {")", " REFERENCES contacts(oid) ON DELETE CASCADE)"},
        {")", " UNIQUE ON CONFLICT REPLACE)"},
        {")", " DEFAULT (zeroblob(1000000000)))"},
        {")", ", mood TEXT)"},
        {"subject TEXT", "subject TEXT COLLATE NOCASE"},
        {"AUTOINCREMENT", ""},
    };
    for (const auto& [was, is] : changes) {
        DeleteFileW(Path().c_str());
        MakeStore();
        std::string sql = RawStore(Path()).Text("SELECT sql FROM sqlite_schema WHERE name = 'journal'");
        ASSERT_NE(sql.rfind(was), std::string::npos);
        sql.replace(sql.rfind(was), strlen(was), is);
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

// Each with the sentence that a person gets.
class RefusedStore : public Opening {
  protected:
    void ExpectTold(StoreTrouble trouble, const wchar_t* why) const
    {
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_EQ(journal.Trouble(), trouble);
        EXPECT_EQ(NotOpenedText(Path(), journal.Trouble()),
                  Path() + L"\n\ncannot be opened: " + why + L".\n\nNothing in it has been changed.");
    }
};

TEST_F(RefusedStore, ThatIsDamagedSaysSo)
{
    MakeStore();
    std::string bytes = ReadFileBytes(Path());
    ASSERT_GE(bytes.size(), 4096u);
    std::fill(bytes.begin() + 100, bytes.begin() + 4096, '\xFF');
    ASSERT_TRUE(WriteFileBytes(Path(), bytes));
    ExpectRefused(StoreTrouble::Damaged);
    ExpectTold(StoreTrouble::Damaged, L"the journal's file is damaged");
}

HANDLE WINAPI NoAccess(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE)
{
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

TEST_F(RefusedStore, OfSomebodyElseSaysSo)
{
    MakeStore();
    const ImportWatch<decltype(&CreateFileW)> watch(&__imp_CreateFileW, NoAccess);
    ExpectTold(StoreTrouble::NoAccess, L"the system does not allow the use of the journal's file");
}

TEST_F(RefusedStore, OnADriveThatIsNotThereSaysSo)
{
    SetEnvironmentVariableW(L"MERVANE_STORE", L"Q:\\nowhere\\journal.db");
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::Unreachable);
    EXPECT_EQ(NotOpenedText(mervane::StorePath(), journal.Trouble()),
              L"Q:\\nowhere\\journal.db\n\ncannot be opened: the journal's file cannot be reached.\n\n"
              L"Nothing in it has been changed.");
}

TEST_F(RefusedStore, BesideALogOfNobodyKnowsWhichSaysSo)
{
    MakeStore();
    std::string log;
    {
        RawStore raw(Path());
        ASSERT_TRUE(raw.Run("PRAGMA wal_autocheckpoint = 0; UPDATE journal SET subject = 'in the log'"));
        log = ReadFileBytes(Beside(L"-wal"));
    }
    ASSERT_FALSE(log.empty());
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    ASSERT_TRUE(WriteFileBytes(Beside(L"-wal"), log));
    ExpectRefused(StoreTrouble::OddLog);
    ExpectTold(StoreTrouble::OddLog,
               L"a log lies beside the journal's file, and it cannot be told whether it belongs to it");
}

// Only for a lock it is worth to try again.
TEST_F(RefusedStore, ForAnythingButALockIsNotWaitedFor)
{
    MakeStore();
    ASSERT_TRUE(RawStore(Path()).Run("PRAGMA journal_mode = DELETE"));
    WatchedFiles files;
    files.FillDisk(true); // which only the change of the mode finds
    const ULONGLONG start = GetTickCount64();
    ExpectTold(StoreTrouble::Full, L"the disk is full");
    EXPECT_LT(GetTickCount64() - start, 2400u);
    files.FillDisk(false);
    ExpectUsable(1);
}

} // namespace
