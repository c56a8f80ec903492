// The day's copy of a store.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>

#include "mervane/backup/backup_keep.h"
#include "records.h"
#include "support/held_file.h"
#include "support/test_drive.h"
#include "support/test_store.h"
#include "util/owners.h"
#include "watched_files.h"

namespace {

constexpr SYSTEMTIME OnDay(WORD month, WORD day)
{
    SYSTEMTIME time{};
    time.wYear = 2026;
    time.wMonth = month;
    time.wDay = day;
    return time;
}
constexpr SYSTEMTIME kSaturday = OnDay(1, 31);

class Backup : public testing::Test {
  protected:
    Backup()
    {
        const std::wstring& path = m_store.Path();
        m_stem = path.substr(path.find_last_of(L'\\') + 1);
        m_stem.resize(m_stem.size() - 3);
    }
    ~Backup() override
    {
        m_journal.Close();
        SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }

    void Open(int entries)
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        CeDBase::BulkScope bulk(m_journal);
        for (int i = 0; i < entries; ++i)
            ASSERT_NE(Sent().Text(kSubject, L"s").Text(kBody, std::wstring(20'000, L'x')).Write(m_journal),
                      0u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    // How many steps the day's copy takes, without the time between them, in which this is done.
    int StepAll(const std::function<void()>& between = [] {})
    {
        int steps = 1;
        for (; m_journal.StepBackup(nullptr) && steps < 1000; ++steps)
            between();
        return steps;
    }
    void MakeBackup(const SYSTEMTIME& day = kSaturday)
    {
        ASSERT_NE(m_journal.BeginBackup(day), 0u);
        StepAll();
    }

    // Makes the day's copy while another program has it open, which lets go of it once so many more steps
    // have been asked for in 250 milliseconds; how many were. No step waits by itself.
    int TriesWhileHeld(
        int letGoAt, const std::function<void()>& letGo = [] {})
    {
        EXPECT_NE(m_journal.BeginBackup(kSaturday), 0u);
        std::optional<HeldFile> held;
        bool wasHeld = false;
        int tries = 0;
        while (const unsigned next = m_journal.StepBackup(nullptr)) {
            for (const std::wstring& name : Found())
                if (!wasHeld && name.ends_with(L".part")) {
                    held.emplace(Folder() + name, 0, FILE_SHARE_READ | FILE_SHARE_WRITE);
                    wasHeld = true;
                }
            if (next == 250 && ++tries == letGoAt) {
                letGo();
                EXPECT_EQ(held->Waits(), 0);
                held.reset();
            }
        }
        EXPECT_TRUE(wasHeld) << "or nothing is tried here";
        EXPECT_TRUE(!held || held->Waits() == 0) << "in a step, which holds up the window";
        return tries;
    }

    std::wstring Folder() const { return BackupFolderOf(m_store.Path()); }
    std::wstring Name(const wchar_t* day) const { return m_stem + L"-2026-" + day + L".db"; }
    std::vector<std::wstring> Names(const std::vector<const wchar_t*>& days) const
    {
        std::vector<std::wstring> names;
        for (const wchar_t* day : days)
            names.push_back(Name(day));
        return names;
    }
    std::vector<std::wstring> Found() const { return BackupsOf(m_store.Path()); }
    void PutFile(const std::wstring& name) const
    {
        CreateDirectoryW(Folder().c_str(), nullptr);
        ASSERT_TRUE(WriteFileBytes(Folder() + name, "put"));
    }
    bool HasFolder() const { return GetFileAttributesW(Folder().c_str()) != INVALID_FILE_ATTRIBUTES; }
    // What the day's copy has.
    int64_t EntriesIn(const wchar_t* day) const
    {
        RawStore copy(Folder() + Name(day));
        EXPECT_EQ(copy.Text("PRAGMA integrity_check"), "ok");
        return copy.Integer("SELECT count(*) FROM journal");
    }

    TestStore m_store;
    std::wstring m_stem;
    DbJournal m_journal;
};

TEST_F(Backup, HasWhatWasSavedLast)
{
    Open(3);
    MakeBackup();
    EXPECT_EQ(Found(), Names({L"01-31"}));
    EXPECT_EQ(EntriesIn(L"01-31"), 3);
    EXPECT_EQ(m_journal.BackupTrouble(), StoreTrouble::None);
}

TEST_F(Backup, CanBeOpenedAsAStore)
{
    Open(2);
    MakeBackup();
    m_journal.Close();
    ASSERT_TRUE(CopyFileW((Folder() + Name(L"01-31")).c_str(), m_store.Path().c_str(), FALSE));
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    EXPECT_EQ(m_journal.RecordCount(), 2u);
}

TEST_F(Backup, IsMadeOnceADay)
{
    Open(1);
    MakeBackup();
    const std::string bytes = ReadFileBytes(Folder() + Name(L"01-31"));
    ASSERT_NE(AddEntry(m_journal, L"later"), 0u);
    EXPECT_EQ(m_journal.BeginBackup(kSaturday), 0u);
    EXPECT_EQ(m_journal.StepBackup(nullptr), 0u);
    EXPECT_TRUE(ReadFileBytes(Folder() + Name(L"01-31")) == bytes);
    MakeBackup(OnDay(2, 1));
    EXPECT_EQ(Found(), Names({L"01-31", L"02-01"}));
    EXPECT_EQ(EntriesIn(L"02-01"), 2);
}

TEST_F(Backup, IsNoneOfADayThatIsNone)
{
    Open(1);
    EXPECT_EQ(m_journal.BeginBackup(OnDay(2, 30)), 0u);
    EXPECT_FALSE(HasFolder());
}

// 20,000 bytes are five pages.
TEST_F(Backup, IsMadeInSmallStepsWithWhatIsSavedMeanwhile)
{
    Open(200);
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    int saved = 0;
    const int steps = StepAll([&] {
        EXPECT_EQ(Found().size(), 1u);
        EXPECT_NE(Found(), Names({L"01-31"})) << "named before it is whole";
        if (saved < 3 && AddEntry(m_journal, L"meanwhile") != 0)
            ++saved;
    });
    EXPECT_GE(steps, 1000 / 64);
    EXPECT_LE(steps, 1010 / 64 + 3) << "own saves do not begin it anew";
    EXPECT_EQ(saved, 3);
    EXPECT_EQ(EntriesIn(L"01-31"), 203);
}

TEST_F(Backup, ComesToAnEndWhileAnotherProgramWritesNowAndThen)
{
    Open(200);
    RawStore other(m_store.Path());
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    int foreign = 0, steps = 0;
    StepAll([&] {
        if (++steps % 4 == 0) {
            EXPECT_TRUE(other.Run("INSERT INTO journal(subject) VALUES('of another')"));
            ++foreign;
        }
    });
    EXPECT_LE(steps, 4 * 5);
    EXPECT_GE(foreign, 2);
    EXPECT_EQ(Found(), Names({L"01-31"}));
    EXPECT_EQ(EntriesIn(L"01-31"), 200 + foreign);
}

// It neither keeps the disk busy for nothing nor copies all in one go.
TEST_F(Backup, IsLeftAloneForAWhileWhereAnotherProgramWritesOnAndOn)
{
    Open(200);
    RawStore other(m_store.Path());
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    for (int round = 0; round < 2; ++round) {
        unsigned next = 0;
        int steps = 0;
        do {
            EXPECT_TRUE(other.Run("INSERT INTO journal(subject) VALUES('of another')"));
            next = m_journal.StepBackup(nullptr);
        } while (++steps < 50 && next < 1000 && next != 0);
        EXPECT_LE(steps, 11);
        EXPECT_GE(next, 10'000u);
    }
    StepAll();
    EXPECT_EQ(Found(), Names({L"01-31"}));
    EXPECT_GE(EntriesIn(L"01-31"), 210);
}

TEST_F(Backup, LetsOthersWriteBetweenItsSteps)
{
    Open(200);
    RawStore other(m_store.Path());
    ASSERT_TRUE(other.Run("PRAGMA busy_timeout = 0"));
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    ASSERT_NE(m_journal.StepBackup(nullptr), 0u);
    EXPECT_TRUE(other.Run("INSERT INTO journal(subject) VALUES('of another')"));
    EXPECT_TRUE(other.Run("PRAGMA wal_checkpoint(TRUNCATE)"));
    EXPECT_EQ(ReadFileBytes(m_store.Path() + L"-wal"), "");
}

// The check takes as long as reading the copy: what the person does comes first.
TEST_F(Backup, IsCheckedOnceNothingElseIsToBeDone)
{
    static bool s_isBusy;
    s_isBusy = true;
    const auto mayGoOn = [] { return !s_isBusy; };
    Open(200);
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    for (int steps = 0; steps < 50; ++steps)
        ASSERT_NE(m_journal.StepBackup(mayGoOn), 0u);
    EXPECT_NE(Found(), Names({L"01-31"}));
    s_isBusy = false;
    EXPECT_EQ(m_journal.StepBackup(mayGoOn), 0u);
    EXPECT_EQ(EntriesIn(L"01-31"), 200);
}

TEST_F(Backup, ThatIsNotCheckedYetIsNoneAtItsEnd)
{
    Open(200);
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    for (int steps = 0; steps < 50; ++steps)
        ASSERT_NE(m_journal.StepBackup([] { return false; }), 0u);
    m_journal.EndBackup();
    EXPECT_EQ(m_journal.StepBackup(nullptr), 0u);
    EXPECT_FALSE(HasFolder());
}

// What was copied is the file that was there before.
TEST_F(Backup, IsNoneWhereAnotherFileHasComeIntoTheStoresPlace)
{
    Open(200);
    const std::wstring path = m_store.Path(), moved = path + L".moved";
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    ASSERT_NE(m_journal.StepBackup(nullptr), 0u);
    ASSERT_TRUE(MoveUnix(path, moved));
    ASSERT_TRUE(CopyFileW(moved.c_str(), path.c_str(), TRUE));
    StepAll();
    EXPECT_FALSE(HasFolder());
    EXPECT_EQ(m_journal.BeginBackup(kSaturday), 0u);
    EXPECT_FALSE(HasFolder());
    m_journal.Close();
    ASSERT_TRUE(DeleteFileW(path.c_str()));
    ASSERT_TRUE(MoveFileW(moved.c_str(), path.c_str()));
}

TEST_F(Backup, WaitsWhileTheStoreIsWritten)
{
    Open(1);
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    {
        CeDBase::BulkScope bulk(m_journal);
        ASSERT_NE(AddEntry(m_journal, L"in one"), 0u);
        const ULONGLONG start = GetTickCount64();
        for (int i = 0; i < 20; ++i)
            EXPECT_NE(m_journal.StepBackup(nullptr), 0u);
        EXPECT_LT(GetTickCount64() - start, 1000u);
        ASSERT_EQ(bulk.Commit(), 1);
    }
    StepAll();
    EXPECT_EQ(EntriesIn(L"01-31"), 2);
}

TEST_F(Backup, EndsWithTheStoreAndLeavesNothing)
{
    Open(200);
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    ASSERT_NE(m_journal.StepBackup(nullptr), 0u);
    m_journal.Close();
    EXPECT_EQ(m_journal.StepBackup(nullptr), 0u);
    EXPECT_FALSE(HasFolder());
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    MakeBackup();
    EXPECT_EQ(EntriesIn(L"01-31"), 200);
}

TEST_F(Backup, RemovesOwnUnfinishedOnesOnly)
{
    Open(1);
    const std::vector<std::wstring> others = {m_stem + L"-2026-01-29.db.part", m_stem + L"-notes.txt"};
    PutFile(Name(L"01-29") + L".77.part");
    PutFile(Name(L"01-31") + L".78.part");
    PutFile(m_stem + L"-before-v2.db.79.part");
    for (const std::wstring& other : others)
        PutFile(other);
    MakeBackup();
    EXPECT_EQ(Found(), (std::vector<std::wstring>{others[0], Name(L"01-31"), others[1]}));
}

TEST_F(Backup, OfAReadOnlyStoreIsNone)
{
    Open(1);
    m_journal.Close();
    ASSERT_TRUE(SetFileAttributesW(m_store.Path().c_str(), FILE_ATTRIBUTE_READONLY));
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    EXPECT_EQ(m_journal.BeginBackup(kSaturday), 0u);
    EXPECT_FALSE(HasFolder());
}

TEST_F(Backup, IsNoneWhereAFileHasTheFoldersName)
{
    Open(1);
    const std::wstring file = Folder().substr(0, Folder().size() - 1);
    ASSERT_TRUE(WriteFileBytes(file, "own"));
    EXPECT_EQ(m_journal.BeginBackup(kSaturday), 0u);
    EXPECT_EQ(ReadFileBytes(file), "own");
    EXPECT_NE(AddEntry(m_journal, L"s"), 0u);
    EXPECT_TRUE(DeleteFileW(file.c_str()));
}

TEST_F(Backup, ThatADiskHasNoRoomForLeavesNothing)
{
    WatchedFiles files;
    Open(200);
    for (const bool atEnd : {false, true}) {
        ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
        atEnd ? files.FailSyncs(true) : files.FillDisk(true);
        StepAll();
        files.FillDisk(false);
        files.FailSyncs(false);
        EXPECT_FALSE(HasFolder());
        EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::None);
        EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::Damaged);
        EXPECT_NE(AddEntry(m_journal, L"s"), 0u);
    }
    MakeBackup();
    EXPECT_EQ(EntriesIn(L"01-31"), 202);
    m_journal.Close();
}

// A Sunday of a month before, and eight days.
TEST_F(Backup, TakesTheOldestOnesPlace)
{
    Open(1);
    for (const wchar_t* day :
         {L"01-18", L"01-23", L"01-24", L"01-26", L"01-27", L"01-28", L"01-29", L"01-30"})
        PutFile(Name(day));
    MakeBackup();
    EXPECT_EQ(Found(),
              Names({L"01-18", L"01-24", L"01-26", L"01-27", L"01-28", L"01-29", L"01-30", L"01-31"}));
}

// The store was lost, and another one begun in its place.
TEST_F(Backup, LeavesThoseOfAStoreThatHadMoreRecords)
{
    Open(3);
    MakeBackup(OnDay(1, 2));
    m_journal.Close();
    ASSERT_TRUE(DeleteFileW(m_store.Path().c_str()));
    Open(2);
    for (const WORD day : std::initializer_list<WORD>{5, 6, 7, 8, 9, 10, 12})
        MakeBackup(OnDay(1, day));
    EXPECT_EQ(Found().size(), 8u);
    EXPECT_EQ(EntriesIn(L"01-02"), 3);
    // The new one's own go as ever.
    MakeBackup(OnDay(1, 13));
    EXPECT_EQ(Found(),
              Names({L"01-02", L"01-06", L"01-07", L"01-08", L"01-09", L"01-10", L"01-12", L"01-13"}));
}

TEST_F(Backup, LeavesTheOldestWhileItCannotBeRead)
{
    Open(1);
    for (const WORD day : std::initializer_list<WORD>{5, 6, 7, 8, 9, 10, 12})
        MakeBackup(OnDay(1, day));
    {
        const UniqueKernelHandle other(CreateFileW((Folder() + Name(L"01-05")).c_str(), GENERIC_READ,
                                                   FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                                   FILE_ATTRIBUTE_NORMAL, nullptr));
        MakeBackup(OnDay(1, 13));
    }
    EXPECT_EQ(Found().size(), 8u);
    MakeBackup(OnDay(1, 14));
    EXPECT_EQ(Found().size(), 7u);
}

// Only what the check itself finds is told as damage.
TEST_F(Backup, ThatCouldNotBeCheckedFoundNoDamage)
{
    WatchedFiles files;
    Open(3);
    int reads = 0;
    for (bool isMade = false; !isMade && reads < 1000; ++reads) {
        ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u) << reads;
        files.FailOneRead(reads);
        StepAll();
        files.FailOneRead(-1);
        isMade = Found() == Names({L"01-31"});
        EXPECT_EQ(m_journal.BackupTrouble() == StoreTrouble::None, isMade) << reads;
        EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::Damaged) << reads;
    }
    EXPECT_GT(reads, 5);
    EXPECT_LT(reads, 1000);
    m_journal.Close();
}

TEST_F(Backup, OfADamagedStoreIsNoneAndOlderOnesStay)
{
    Open(200);
    m_journal.Close();
    std::string bytes = ReadFileBytes(m_store.Path());
    std::fill_n(bytes.begin() + 4096 * 100, 4096 * 20, '\x55');
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    ASSERT_EQ(m_journal.Open(nullptr), 1);
    for (const wchar_t* day :
         {L"01-21", L"01-22", L"01-23", L"01-24", L"01-26", L"01-27", L"01-28", L"01-29"})
        PutFile(Name(day));
    MakeBackup();
    EXPECT_EQ(Found(),
              Names({L"01-21", L"01-22", L"01-23", L"01-24", L"01-26", L"01-27", L"01-28", L"01-29"}));
    EXPECT_TRUE(ReadFileBytes(m_store.Path()) == bytes);
    EXPECT_EQ(m_journal.BackupTrouble(), StoreTrouble::Damaged);
}

// A tool has changed the open store's tables: what is copied then is no store of ours.
TEST_F(Backup, OfTablesThatAreNotOursIsNone)
{
    Open(1);
    ASSERT_TRUE(RawStore(m_store.Path()).Run("ALTER TABLE journal ADD COLUMN own TEXT CHECK(own > 1)"));
    MakeBackup();
    EXPECT_FALSE(HasFolder());
}

// A copy that is whole and checked, and yet gets no name: another program has made the day's backup
// meanwhile.
TEST_F(Backup, ThatCannotHaveItsNameLeavesTheFileThatHasIt)
{
    Open(1);
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    StepAll([&] { PutFile(Name(L"01-31")); });
    EXPECT_EQ(ReadFileBytes(Folder() + Name(L"01-31")), "put");
    EXPECT_EQ(Found(), Names({L"01-31"})) << "nothing unfinished beside it";
    EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::None);
    EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::Damaged);
    EXPECT_NE(AddEntry(m_journal, L"s"), 0u);
}

// Older ones go only behind a new one.
TEST_F(Backup, ThatCannotHaveItsNameLeavesTheOlderOnes)
{
    const std::vector<const wchar_t*> days = {L"01-18", L"01-23", L"01-24", L"01-26", L"01-27",
                                              L"01-28", L"01-29", L"01-30", L"01-31"};
    Open(1);
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    StepAll([&] {
        for (const wchar_t* day : days)
            PutFile(Name(day));
    });
    EXPECT_EQ(Found(), Names(days));
}

// As by a program that looks through every new file.
TEST_F(Backup, ThatAnotherProgramHoldsBehindItsLastStepIsNone)
{
    Open(1);
    PutFile(Name(L"01-30"));
    ASSERT_NE(m_journal.BeginBackup(kSaturday), 0u);
    HANDLE held = INVALID_HANDLE_VALUE;
    StepAll([&] {
        for (const std::wstring& name : Found())
            if (held == INVALID_HANDLE_VALUE && name.ends_with(L".part"))
                held = CreateFileW((Folder() + name).c_str(), GENERIC_READ, FILE_SHARE_DELETE, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    });
    ASSERT_NE(held, INVALID_HANDLE_VALUE) << "or nothing is tried here";
    EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::None);
    EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::Damaged) << "it is not known to be";
    for (const std::wstring& name : Found())
        EXPECT_TRUE(name == Name(L"01-30") || name.ends_with(L".part"))
            << "named without having been checked";
    CloseHandle(held);
    MakeBackup();
    EXPECT_EQ(Found(), Names({L"01-30", L"01-31"}));
    EXPECT_EQ(EntriesIn(L"01-31"), 1);
}

TEST_F(Backup, GetsItsNameOnceWhoeverHoldsItLetsItGo)
{
    Open(1);
    EXPECT_EQ(TriesWhileHeld(3), 3);
    EXPECT_EQ(Found(), Names({L"01-31"}));
    EXPECT_EQ(EntriesIn(L"01-31"), 1);
    EXPECT_EQ(m_journal.BackupTrouble(), StoreTrouble::None);
}

TEST_F(Backup, ThatIsHeldForTwoSecondsIsNone)
{
    Open(1);
    EXPECT_EQ(TriesWhileHeld(100), 2000 / 250);
    EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::None);
    EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::Damaged);
    EXPECT_NE(Found(), Names({L"01-31"}));
    MakeBackup();
    EXPECT_EQ(Found(), Names({L"01-31"}));
}

// The other file may come while the name is waited for, too.
TEST_F(Backup, IsNoneWhereAnotherFileHasItsNameByTheTimeItIsLetGo)
{
    Open(1);
    EXPECT_EQ(TriesWhileHeld(2, [this] { PutFile(Name(L"01-31")); }), 2);
    EXPECT_EQ(ReadFileBytes(Folder() + Name(L"01-31")), "put");
    EXPECT_EQ(Found(), Names({L"01-31"})) << "nothing unfinished beside it";
    EXPECT_NE(m_journal.BackupTrouble(), StoreTrouble::None);
}

TEST_F(Backup, IsNoneWhereAFolderHasItsUnfinishedName)
{
    Open(1);
    const std::wstring folder =
        Folder() + mervane::BackupNames::Unfinished(Name(L"01-31"), GetCurrentProcessId());
    ASSERT_TRUE(CreateDirectoryW(Folder().c_str(), nullptr));
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    EXPECT_EQ(m_journal.BeginBackup(kSaturday), 0u);
    EXPECT_EQ(m_journal.StepBackup(nullptr), 0u);
    EXPECT_EQ(Found().size(), 1u);
    ASSERT_TRUE(RemoveDirectoryW(folder.c_str()));
    MakeBackup();
    EXPECT_EQ(EntriesIn(L"01-31"), 1);
}

} // namespace
