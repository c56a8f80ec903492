// Putting a backup into the place of a store that is broken.
#include <string_view>

#include "restoration_fixture.h"
#include "support/file_faults.h"

namespace {

using mervane::BackupDay;
using mervane::FinishRestoration;
using mervane::IsBroken;
using mervane::NewestWholeBackup;
using mervane::Restoration;

TEST_F(BrokenStore, IsOneThatIsDamagedOrNoDatabase)
{
    EXPECT_FALSE(IsBroken(Path(), StoreTrouble::NotAStore)) << "there is none";
    MakeStore(1);
    const std::string whole = ReadFileBytes(Path());
    const auto isBroken = [&](const std::string& bytes) {
        EXPECT_TRUE(WriteFileBytes(Path(), bytes));
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        const bool broken = IsBroken(Path(), journal.Trouble());
        EXPECT_TRUE(ReadFileBytes(Path()) == bytes);
        return broken;
    };
    EXPECT_TRUE(isBroken(whole.substr(0, 4096))) << "cut off";
    EXPECT_TRUE(isBroken(whole.substr(0, 5000)));
    EXPECT_TRUE(isBroken(whole.substr(0, 20)));
    EXPECT_TRUE(isBroken(std::string(whole.size(), '\0')));
    EXPECT_TRUE(isBroken("Dear diary"));
    EXPECT_TRUE(isBroken(std::string(100, '\xFF') + whole.substr(100)));
    std::string newer = whole;
    newer[60] = 0x7F;
    EXPECT_FALSE(isBroken(newer));
    std::string others = whole;
    others[68] = 'X'; // the mark of the program that it belongs to
    EXPECT_FALSE(isBroken(others));
    ASSERT_TRUE(WriteFileBytes(Path(), whole));
    for (const StoreTrouble trouble :
         {StoreTrouble::Locked, StoreTrouble::NoAccess, StoreTrouble::Full, StoreTrouble::OddLog,
          StoreTrouble::Unreachable, StoreTrouble::NotAStore})
        EXPECT_FALSE(IsBroken(Path(), trouble));
    ExpectOpens(1);
}

TEST_F(BrokenStore, HasTheNewestBackupThatIsWhole)
{
    EXPECT_FALSE(NewestWholeBackup(Path(), kToday).found);
    EXPECT_FALSE(NewestWholeBackup(Path(), kToday).hasAny);
    MakeStore(2);
    KeepAs(L"2026-01-31");
    KeepAs(L"2026-02-20"); // made under a wrong clock
    KeepAs(L"before-v2");
    MakeStore(1);
    KeepAs(L"2026-02-01");
    MakeStore(1);
    for (const wchar_t* day : {L"2026-02-02", L"2026-02-03", L"2026-02-04", L"2026-02-05.db.7.part"})
        KeepAs(day);
    Cut(BackupOf(L"2026-02-02"));
    ASSERT_TRUE(WriteFileBytes(BackupOf(L"2026-02-03"), ""));
    std::string bytes = ReadFileBytes(BackupOf(L"2026-02-04"));
    bytes.replace(bytes.size() - 8192, 8192, 8192, '\x55');
    ASSERT_TRUE(WriteFileBytes(BackupOf(L"2026-02-04"), bytes));
    struct {
        const wchar_t* gone;
        const wchar_t* found;
        BackupDay day;
        int64_t entries;
    } const cases[] = {
        {L"none", L"2026-02-01", {kToday.year(), kToday.month(), std::chrono::day(1)}, 3},
        {L"2026-02-01", L"2026-01-31", {kToday.year(), std::chrono::month(1), std::chrono::day(31)}, 2},
        {L"2026-01-31", L"2026-02-20", {kToday.year(), kToday.month(), std::chrono::day(20)}, 2},
    };
    for (const auto& each : cases) {
        DeleteFileW(BackupOf(each.gone).c_str());
        const auto found = NewestWholeBackup(Path(), kToday).found;
        ASSERT_TRUE(found) << each.gone;
        EXPECT_EQ(found->path, BackupOf(each.found));
        EXPECT_EQ(found->day, each.day);
        EXPECT_EQ(found->entries, each.entries);
    }
    // One that was made before a migration has the day of its file.
    ASSERT_TRUE(DeleteFileW(BackupOf(L"2026-02-20").c_str()));
    SYSTEMTIME now;
    GetLocalTime(&now);
    const auto last = NewestWholeBackup(Path(), kToday).found;
    ASSERT_TRUE(last);
    EXPECT_EQ(last->path, BackupOf(L"before-v2"));
    EXPECT_TRUE(last->day.ok());
    EXPECT_EQ(static_cast<int>(last->day.year()), now.wYear);
    ASSERT_TRUE(DeleteFileW(BackupOf(L"before-v2").c_str()));
    const auto none = NewestWholeBackup(Path(), kToday);
    EXPECT_FALSE(none.found);
    EXPECT_TRUE(none.hasAny);
    EXPECT_EQ(none.trouble, StoreTrouble::None);
}

// Behind the damaged one, which is read and passed over.
TEST_F(BrokenStore, HasNoNewestBackupWhereOneCannotBeRead)
{
    MakeStore(1);
    for (const wchar_t* day : {L"2026-02-01", L"2026-02-02", L"2026-02-03"})
        KeepAs(day);
    Cut(BackupOf(L"2026-02-03"));
    {
        HANDLE other = CreateFileW(BackupOf(L"2026-02-02").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(other, INVALID_HANDLE_VALUE);
        const UniqueKernelHandle owner(other);
        const auto search = NewestWholeBackup(Path(), kToday);
        EXPECT_FALSE(search.found) << "an older one";
        EXPECT_EQ(search.trouble, StoreTrouble::Locked);
        EXPECT_EQ(search.unread, BackupOf(L"2026-02-02"));
    }
    const auto search = NewestWholeBackup(Path(), kToday);
    ASSERT_TRUE(search.found);
    EXPECT_EQ(search.found->path, BackupOf(L"2026-02-02"));
}

TEST_F(BrokenStore, HasNoNewestBackupWhereTheirFolderCannotBeListed)
{
    MakeStore(1);
    KeepAs(L"2026-02-01");
    const ImportWatch<decltype(&FindFirstFileW)> watch(&__imp_FindFirstFileW, ListsNothing);
    const auto search = NewestWholeBackup(Path(), kToday);
    EXPECT_FALSE(search.found);
    EXPECT_EQ(search.trouble, StoreTrouble::NoAccess);
    EXPECT_EQ(search.unread, BackupFolderOf(Path()));
}

// Whichever read of it fails, the backup is not passed over for an older one.
TEST_F(BrokenStore, HasNoOlderBackupWhereAReadFails)
{
    MakeStore(3);
    KeepAs(L"2026-02-01");
    KeepAs(L"2026-02-02");
    WatchedFiles files;
    int reads = 0;
    for (bool isFound = false; !isFound && reads < 1000; ++reads) {
        files.FailOneRead(reads);
        const auto search = NewestWholeBackup(Path(), kToday);
        isFound = search.found.has_value();
        EXPECT_EQ(search.unread, isFound ? L"" : BackupOf(L"2026-02-02")) << reads;
        EXPECT_EQ(search.trouble, isFound ? StoreTrouble::None : StoreTrouble::Unreachable) << reads;
        if (isFound) {
            EXPECT_EQ(search.found->path, BackupOf(L"2026-02-02")) << reads;
        }
    }
    EXPECT_GT(reads, 5);
    EXPECT_LT(reads, 1000);
}

decltype(&CopyFileW) g_copy = nullptr;
std::optional<HeldFile> g_held;

BOOL WINAPI CopyAndHold(LPCWSTR from, LPCWSTR to, BOOL never)
{
    const BOOL isCopied = g_copy(from, to, never);
    g_held.emplace(to, 3);
    return isCopied;
}

TEST_F(BrokenStore, IsKeptWholeBesideTheBackupInItsPlace)
{
    BreakAll();
    const auto before = Files();
    const std::string backup = ReadFileBytes(BackupOf(L"2026-02-09"));
    const Restoration restoration(Path());
    EXPECT_EQ(restoration.InTheWay(), StoreTrouble::None);
    EXPECT_TRUE(Files() == before) << "nothing is done yet";
    ASSERT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
    EXPECT_EQ(Files().size(), 5u);
    EXPECT_TRUE(ReadFileBytes(Path()) == backup);
    ExpectKept(restoration.KeptAs(), before);
    ExpectOpens(2);
    EXPECT_TRUE(ReadFileBytes(BackupOf(L"2026-02-09")) == backup);
}

TEST_F(BrokenStore, IsKeptUnderANameOfItsOwnEachTime)
{
    BreakAll();
    const auto before = Files();
    const Restoration first(Path());
    ASSERT_EQ(first.Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
    ASSERT_TRUE(WriteFileBytes(Path(), "broken again"));
    const Restoration second(Path());
    EXPECT_NE(second.KeptAs(), first.KeptAs());
    ASSERT_EQ(second.Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
    ExpectKept(first.KeptAs(), before);
    EXPECT_EQ(ReadFileBytes(second.KeptAs()), "broken again");
    ExpectOpens(2);
}

TEST_F(BrokenStore, IsReplacedByACopyThatCanBeWritten)
{
    BreakAll();
    const std::wstring backup = BackupOf(L"2026-02-09");
    ASSERT_TRUE(SetFileAttributesW(backup.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(Restoration(Path()).Run(backup), StoreTrouble::None);
    ASSERT_TRUE(SetFileAttributesW(backup.c_str(), FILE_ATTRIBUTE_NORMAL));
    ExpectOpens(2);
}

TEST_F(BrokenStore, ThatAnotherProgramHasOpenStays)
{
    BreakAll();
    const auto before = Files();
    const Restoration restoration(Path());
    {
        const HeldFile other = OpenElsewhere(Path());
        EXPECT_EQ(restoration.InTheWay(), StoreTrouble::Locked);
        EXPECT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::Locked);
    }
    EXPECT_TRUE(Files() == before);
    EXPECT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
}

// As a scanner does, which opens what is new or was touched.
class HeldForAMoment : public BrokenStore, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(HeldForAMoment, IsExchangedAllTheSame)
{
    BreakAll();
    const auto before = Files();
    const Restoration restoration(Path());
    {
        const HeldFile held(Path() + GetParam(), 3);
        EXPECT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
        EXPECT_EQ(held.Waits(), 3);
    }
    ExpectOpens(2);
    ExpectKept(restoration.KeptAs(), before);
}

INSTANTIATE_TEST_SUITE_P(Files, HeldForAMoment, testing::Values(L"", L"-wal", L"-shm", L"-journal"));

// Its copy is new, and whoever looks through it lets nobody else write.
TEST_F(BrokenStore, IsExchangedForACopyThatIsHeldForAMoment)
{
    BreakAll();
    const Restoration restoration(Path());
    g_copy = __imp_CopyFileW;
    {
        const ImportWatch<decltype(&CopyFileW)> watch(&__imp_CopyFileW, CopyAndHold);
        EXPECT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
    }
    ASSERT_TRUE(g_held);
    EXPECT_EQ(g_held->Waits(), 3);
    g_held.reset();
    ExpectOpens(2);
}

// For two seconds in all, and then for good.
TEST_F(BrokenStore, IsNotWaitedForLonger)
{
    BreakAll();
    const HeldFile held(Path() + L"-wal", 0);
    EXPECT_EQ(Restoration(Path()).Run(BackupOf(L"2026-02-09")), StoreTrouble::Locked);
    EXPECT_EQ(held.Waited(), 2000u);
}

// A neighbour that cannot be renamed: what was renamed before it gets its name back.
TEST_F(BrokenStore, StaysWholeWhereOneOfItsFilesCannotBeRenamed)
{
    BreakAll();
    const auto before = Files();
    for (const wchar_t* suffix : kNeighbours) {
        const HeldFile other = OpenElsewhere(Path() + suffix);
        EXPECT_EQ(Restoration(Path()).Run(BackupOf(L"2026-02-09")), StoreTrouble::Locked) << suffix;
        EXPECT_TRUE(Files() == before) << suffix;
    }
}

TEST_F(BrokenStore, StaysWhereANameIsTakenMeanwhile)
{
    BreakAll();
    const auto before = Files();
    const Restoration restoration(Path());
    const std::wstring copy = CopyOf(restoration);
    for (const std::wstring& name : {copy + L".part", copy, restoration.KeptAs()}) {
        ASSERT_TRUE(CreateDirectoryW(name.c_str(), nullptr));
        EXPECT_NE(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::None) << name;
        ASSERT_TRUE(RemoveDirectoryW(name.c_str())) << "it is there, and empty";
        EXPECT_TRUE(Files() == before) << name;
    }
    // A file of a neighbour's new name.
    ASSERT_TRUE(WriteFileBytes(restoration.KeptAs() + L"-shm", "of another"));
    EXPECT_NE(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
    EXPECT_EQ(ReadFileBytes(restoration.KeptAs() + L"-shm"), "of another");
    ASSERT_TRUE(DeleteFileW((restoration.KeptAs() + L"-shm").c_str()));
    EXPECT_TRUE(Files() == before);
}

TEST_F(BrokenStore, StaysWhereTheBackupIsNotWholeOrGone)
{
    BreakAll();
    const auto before = Files();
    Cut(BackupOf(L"2026-02-09"));
    EXPECT_EQ(Restoration(Path()).Run(BackupOf(L"2026-02-09")), StoreTrouble::Damaged);
    EXPECT_NE(Restoration(Path()).Run(BackupOf(L"2026-02-08")), StoreTrouble::None);
    EXPECT_TRUE(Files() == before);
}

// While the person was asked, somebody has put a good file there, or mended this one.
TEST_F(BrokenStore, ThatIsAnotherFileByThenStays)
{
    BreakAll();
    const Restoration restoration(Path());
    EXPECT_FALSE(restoration.HasAnother());
    ASSERT_TRUE(WriteFileBytes(Path(), ReadFileBytes(BackupOf(L"2026-02-09"))));
    const auto mended = Files();
    EXPECT_TRUE(restoration.HasAnother());
    EXPECT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::OtherFile);
    EXPECT_TRUE(Files() == mended);
    const Restoration next(Path());
    ASSERT_TRUE(MoveFileW(Path().c_str(), (Path() + L".away").c_str()));
    ASSERT_TRUE(CopyFileW((Path() + L".away").c_str(), Path().c_str(), TRUE));
    EXPECT_EQ(next.Run(BackupOf(L"2026-02-09")), StoreTrouble::OtherFile);
    EXPECT_TRUE(next.HasAnother());
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    EXPECT_FALSE(next.HasAnother());
    EXPECT_NE(next.Run(BackupOf(L"2026-02-09")), StoreTrouble::None) << "it is gone";
    EXPECT_EQ(GetFileAttributesW(Path().c_str()), INVALID_FILE_ATTRIBUTES);
}

// Whichever call of the system fails: all that was there is still there, under its name or the other one, and
// a person who tries again has the backup's entries.
TEST_F(BrokenStore, LosesNothingToACallThatFails)
{
    BreakAll();
    const auto before = Files();
    const std::wstring backup = BackupOf(L"2026-02-09");
    FileFaults faults;
    bool fired = true, restored = false;
    for (int n = 1; fired; ++n) {
        SCOPED_TRACE(n);
        for (const auto& [name, bytes] : Files())
            DeleteFileW((Path().substr(0, Path().find_last_of(L'\\') + 1) + name).c_str());
        for (const auto& [name, bytes] : before)
            ASSERT_TRUE(WriteFileBytes(Path().substr(0, Path().find_last_of(L'\\') + 1) + name, bytes));
        faults.FailNth(n);
        {
            const Restoration restoration(Path());
            restored = restoration.Run(backup) == StoreTrouble::None;
        }
        fired = faults.HasFired();
        faults.FailNone();
        const auto after = Files();
        for (const auto& [name, bytes] : before)
            EXPECT_TRUE(std::any_of(after.begin(), after.end(), [&](const auto& file) {
                return file.second == bytes;
            })) << "it is gone";
        EXPECT_EQ(FinishRestoration(Path()), StoreTrouble::None);
        if (!restored && ReadFileBytes(Path()) != ReadFileBytes(backup)) {
            EXPECT_EQ(Restoration(Path()).Run(backup), StoreTrouble::None);
        }
        ExpectOpens(2);
    }
    EXPECT_TRUE(restored);
}

// What a loss of power leaves: the copy is there, and so many of the renames were done.
class InterruptedRestoration : public BrokenStore {
  protected:
    // moved: of the store, the log, its index, the journal.
    void Interrupt(int moved)
    {
        BreakAll();
        m_before = Files();
        m_kept = Path() + L".damaged-20260210-090000";
        m_copy = Path() + L".restoring-20260210-090000";
        ASSERT_TRUE(CopyFileW(BackupOf(L"2026-02-09").c_str(), m_copy.c_str(), TRUE));
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm", L"-journal"})
            if (moved-- > 0) {
                ASSERT_TRUE(MoveFileW((Path() + suffix).c_str(), (m_kept + suffix).c_str()));
            }
    }

    std::map<std::wstring, std::string> m_before;
    std::wstring m_kept, m_copy;
};

TEST_F(InterruptedRestoration, BeforeTheStoreWasRenamedIsNone)
{
    Interrupt(0);
    auto withCopy = Files();
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_TRUE(Files() == withCopy);
    // The next one leaves nothing of it.
    EXPECT_EQ(Restoration(Path()).Run(BackupOf(L"2026-02-09")), StoreTrouble::None);
    EXPECT_EQ(Files().size(), 5u);
    ExpectOpens(2);
}

class RenamedSoFar : public InterruptedRestoration, public testing::WithParamInterface<int> {};

TEST_P(RenamedSoFar, IsFinishedByTheNextStart)
{
    Interrupt(GetParam());
    ExpectOpens(2);
    ExpectKept(m_kept, m_before);
    EXPECT_EQ(GetFileAttributesW(m_copy.c_str()), INVALID_FILE_ATTRIBUTES);
}

INSTANTIATE_TEST_SUITE_P(Files, RenamedSoFar, testing::Values(1, 2, 3, 4));

TEST_F(InterruptedRestoration, IsFinishedWhateverTheCaseOfThePath)
{
    Interrupt(2);
    std::wstring path = Path();
    CharUpperBuffW(path.data() + 3, static_cast<DWORD>(path.size() - 3));
    SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
    ExpectOpens(2);
    ExpectKept(m_kept, m_before);
}

// Somebody has the broken file open, another start that does the same perhaps: no new store is made.
TEST_F(InterruptedRestoration, WaitsForWhoeverHasItsFiles)
{
    for (const bool ofCopy : {false, true}) {
        Interrupt(4);
        {
            const HeldFile other = OpenElsewhere(ofCopy ? m_copy : m_kept);
            DbJournal journal;
            EXPECT_EQ(journal.Open(nullptr), 0);
            EXPECT_EQ(journal.Trouble(), StoreTrouble::Locked);
            EXPECT_EQ(GetFileAttributesW(Path().c_str()), INVALID_FILE_ATTRIBUTES);
        }
        ExpectOpens(2);
        ExpectKept(m_kept, m_before);
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm", L"-journal"})
            ASSERT_TRUE(DeleteFileW((m_kept + suffix).c_str()));
        ASSERT_TRUE(DeleteFileW(Path().c_str()));
        ASSERT_TRUE(DeleteFileW(BackupOf(L"2026-02-09").c_str()));
    }
}

// A file that was kept long ago, or a copy that is not finished, has nothing to do with a store that is gone.
TEST_F(InterruptedRestoration, IsNoneWithoutBothItsFiles)
{
    ASSERT_TRUE(WriteFileBytes(Path() + L".damaged-20260210-090000", "kept"));
    ASSERT_TRUE(WriteFileBytes(Path() + L".restoring-20260210-090000.part", "half"));
    ASSERT_TRUE(WriteFileBytes(Path() + L".restoring-20260211-090000", "of another time"));
    ExpectOpens(0);
    EXPECT_EQ(ReadFileBytes(Path() + L".damaged-20260210-090000"), "kept");
}

decltype(&MoveFileExW) g_move = nullptr;

// As where another program has the journal open, and opens the log as soon as it has its new name.
BOOL WINAPI MoveNotAll(LPCWSTR from, LPCWSTR to, DWORD flags)
{
    const std::wstring_view path(from);
    const bool isKept = path.find(L".damaged-") != path.npos;
    if (!path.ends_with(isKept ? L"-wal" : L"-journal"))
        return g_move(from, to, flags);
    SetLastError(ERROR_SHARING_VIOLATION);
    return FALSE;
}

// A neighbour cannot be renamed, and one that was cannot get its name back: without its log the store would
// lack what was saved last, so it stays with it, and the next start brings the restoration to its end.
TEST_F(BrokenStore, StaysWithItsLogWhereARestorationCannotBeTakenBack)
{
    BreakAll();
    const auto before = Files();
    const Restoration restoration(Path());
    {
        g_move = __imp_MoveFileExW;
        const ImportWatch<decltype(&MoveFileExW)> watch(&__imp_MoveFileExW, MoveNotAll);
        EXPECT_EQ(restoration.Run(BackupOf(L"2026-02-09")), StoreTrouble::Locked);
    }
    EXPECT_EQ(GetFileAttributesW(Path().c_str()), INVALID_FILE_ATTRIBUTES) << "the store without its log";
    ExpectOpens(2);
    ExpectKept(restoration.KeptAs(), before);
}

} // namespace
