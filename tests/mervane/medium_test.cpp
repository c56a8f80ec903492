// What a store does on drives of different kinds, and what it asks of the memory.
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <algorithm>

#include "mervane/file/drive_kind.h"
#include "mervane/sqlite/file_growth.h"
#include "records.h"
#include "support/import_watch.h"
#include "support/test_drive.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "util/owners.h"

namespace {

FILE_STANDARD_INFO SizesOf(const std::wstring& path)
{
    FILE_STANDARD_INFO sizes{};
    HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    const UniqueKernelHandle owner(file);
    EXPECT_TRUE(GetFileInformationByHandleEx(file, FileStandardInfo, &sizes, sizeof sizes));
    return sizes;
}

bool Exists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// What is mapped has its room on the disk: a full one is noticed by a write, not by the memory.
TEST(SharedMemory, HasItsPagesBeforeTheyAreMapped)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    CeDBase::BulkScope bulk(journal);
    // The index of a log of more than one of its parts.
    for (int i = 0; i < 100; ++i)
        ASSERT_NE(Sent().Text(kBody, std::wstring(200'000, L'x')).Write(journal), 0u);
    ASSERT_EQ(bulk.Commit(), 1);
    const FILE_STANDARD_INFO sizes = SizesOf(store.Path() + L"-shm");
    EXPECT_GT(sizes.EndOfFile.QuadPart, 32'768);
    EXPECT_GE(sizes.AllocationSize.QuadPart, sizes.EndOfFile.QuadPart);
}

decltype(&WriteFile) g_writeFile;

BOOL WINAPI WriteHalf(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped)
{
    return g_writeFile(file, bytes, size / 2, written, overlapped);
}

BOOL WINAPI WriteNothing(HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED)
{
    *written = 0;
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

// SQLite makes a file longer by this: it is longer, and has its room, or it fails.
TEST(Growth, OfAFileThatTheDiskHasNoRoomForFails)
{
    mervane::GrowFilesByWriting();
    sqlite3_vfs* const system = sqlite3_vfs_find("win32");
    const auto setEnd =
        reinterpret_cast<decltype(&SetEndOfFile)>(system->xGetSystemCall(system, "SetEndOfFile"));
    const TestStore store;
    const UniqueKernelHandle file(CreateFileW(store.Path().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                              CREATE_ALWAYS, 0, nullptr));
    ASSERT_NE(file.get(), INVALID_HANDLE_VALUE);
    const auto grow = [&](LONGLONG size) {
        LARGE_INTEGER end{};
        end.QuadPart = size;
        return SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) && setEnd(file.get());
    };
    const auto size = [&] {
        LARGE_INTEGER now{};
        return GetFileSizeEx(file.get(), &now) ? now.QuadPart : -1;
    };
    g_writeFile = __imp_WriteFile;
    for (const auto instead : {WriteNothing, WriteHalf}) {
        const ImportWatch<decltype(&WriteFile)> full(&__imp_WriteFile, instead);
        EXPECT_FALSE(grow(100'000));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_DISK_FULL});
        EXPECT_LT(size(), 100'000);
    }
    EXPECT_TRUE(grow(100'000));
    EXPECT_EQ(size(), 100'000);
    EXPECT_TRUE(grow(10));
    EXPECT_EQ(size(), 10);
}

TEST(StoreFile, IsNotMapped)
{
    EXPECT_TRUE(sqlite3_compileoption_used("MAX_MMAP_SIZE=0"));
}

class OnADrive : public testing::TestWithParam<UINT> {
  protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_drive.IsThere());
        ASSERT_EQ(GetDriveTypeW(L"N:\\"), GetParam());
        SetEnvironmentVariableW(L"MERVANE_STORE", Path().c_str());
    }
    void TearDown() override
    {
        SetEnvironmentVariableW(L"MERVANE_STORE", nullptr);
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm", L"-journal"})
            DeleteFileW((Path() + suffix).c_str());
    }
    std::wstring Path() const { return m_drive.Path(L"own.db"); }
    // A store that was used on a fixed drive and not closed there, with what its log has.
    void CopyWithLog()
    {
        {
            const TestStore fixed;
            DbJournal journal;
            ASSERT_EQ(journal.Open(nullptr), 1);
            ASSERT_NE(AddEntry(journal, L"in the log"), 0u);
            for (const wchar_t* suffix : {L"", L"-wal"})
                ASSERT_TRUE(WriteFileBytes(Path() + suffix, ReadFileBytes(fixed.Path() + suffix)));
        }
        SetEnvironmentVariableW(L"MERVANE_STORE", Path().c_str());
    }

    TestDrive m_drive{GetParam()};
};

TEST_P(OnADrive, HasNoIndexInMappedMemory)
{
    EXPECT_FALSE(mervane::IsOnFixedDrive(Path()));
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_NE(AddEntry(journal, L"s"), 0u);
    EXPECT_FALSE(Exists(Path() + L"-shm"));
    EXPECT_FALSE(Exists(Path() + L"-wal"));
    RawStore other(Path());
    EXPECT_EQ(other.Integer("SELECT count(*) FROM journal"), 1) << "it is not kept from others";
    EXPECT_TRUE(other.Run("INSERT INTO journal(subject) VALUES('of another')"));
    EXPECT_EQ(journal.RecordCount(), 2u);
}

TEST_P(OnADrive, TakesInTheLogThatCameWithTheStore)
{
    ASSERT_NO_FATAL_FAILURE(CopyWithLog());
    ASSERT_TRUE(CreateDirectoryW((Path() + L"-shm").c_str(), nullptr)) << "which cannot be mapped";
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_STREQ(journal.GetSubject(1), L"in the log");
        EXPECT_FALSE(Exists(Path() + L"-wal"));
        ASSERT_NE(AddEntry(journal, L"s"), 0u);
    }
    EXPECT_TRUE(RemoveDirectoryW((Path() + L"-shm").c_str()));
    EXPECT_EQ(RawStore(Path()).Integer("SELECT count(*) FROM journal"), 2);
}

// It could be read only with its index in mapped memory.
TEST_P(OnADrive, RefusesAFileThatHasALogAndCannotBeWritten)
{
    ASSERT_NO_FATAL_FAILURE(CopyWithLog());
    const std::string log = ReadFileBytes(Path() + L"-wal");
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    {
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 0);
        EXPECT_EQ(journal.Trouble(), StoreTrouble::ReadOnly);
        EXPECT_FALSE(Exists(Path() + L"-shm"));
    }
    EXPECT_TRUE(ReadFileBytes(Path() + L"-wal") == log);
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL));
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_STREQ(journal.GetSubject(1), L"in the log");
}

// As the machine does that shares its folder: there the drive is a fixed one.
TEST_P(OnADrive, GoesNotAlongWhereAnotherProgramBeginsALog)
{
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    const CEOID id = AddEntry(journal, L"before");
    ASSERT_NE(id, 0u);
    RawStore other(Path());
    ASSERT_TRUE(other.Run("PRAGMA journal_mode = WAL"));
    ASSERT_TRUE(other.Run("INSERT INTO journal(subject) VALUES('of another')"));
    EXPECT_EQ(Sent().Text(kSubject, L"changed").Write(journal, id), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::Locked);
    EXPECT_EQ(AddEntry(journal, L"new"), 0u);
    EXPECT_EQ(journal.Trouble(), StoreTrouble::Locked);
    ASSERT_TRUE(other.Run("PRAGMA journal_mode = DELETE"));
    EXPECT_NE(AddEntry(journal, L"new"), 0u) << "once the file is as it was";
    EXPECT_EQ(journal.RecordCount(), 3u);
    EXPECT_EQ(other.Integer("SELECT count(*) FROM journal"), 3);
}

// An import, say, of more than the cache holds: the file is locked at its end alone.
TEST_P(OnADrive, CanBeReadBesideALargeWriteThatIsUnderWay)
{
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_NE(AddEntry(journal, L"before"), 0u);
    RawStore other(Path());
    ASSERT_TRUE(other.Run("PRAGMA busy_timeout = 0"));
    CeDBase::BulkScope bulk(journal);
    for (int i = 0; i < 100; ++i) {
        ASSERT_NE(Sent().Text(kBody, std::wstring(100'000, L'x')).Write(journal), 0u);
        ASSERT_EQ(other.Integer("SELECT count(*) FROM journal"), 1) << i;
    }
    ASSERT_EQ(bulk.Commit(), 1);
    EXPECT_EQ(other.Integer("SELECT count(*) FROM journal"), 101);
}

// The timer's look comes between the keys.
TEST_P(OnADrive, IsLookedAtWithoutWaitingForALock)
{
    int told = 0;
    const TestParent owner([&](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        told += message == kMsgDatabaseChange;
        return false;
    });
    DbJournal journal;
    ASSERT_EQ(journal.Open(owner.Handle()), 1);
    RawStore other(Path());
    ASSERT_TRUE(other.Run("BEGIN EXCLUSIVE; INSERT INTO journal(subject) VALUES('of another')"));
    ULONGLONG longest = 0;
    const ULONGLONG end = GetTickCount64() + 1500; // some looks
    for (ULONGLONG now = 0; now < end;) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
        now = GetTickCount64();
        MSG message;
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        longest = std::max(longest, GetTickCount64() - now);
    }
    EXPECT_LT(longest, 1000u);
    EXPECT_EQ(told, 0);
    ASSERT_TRUE(other.Run("COMMIT"));
    EXPECT_TRUE(PumpUntil([&] { return told > 0; })) << "the next look has seen it";
    EXPECT_EQ(journal.RecordCount(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Drives, OnADrive, testing::Values(UINT{DRIVE_REMOTE}, UINT{DRIVE_REMOVABLE}));

TEST(Drive, OfTheTemporaryFolderIsFixed)
{
    const TestStore store;
    EXPECT_TRUE(mervane::IsOnFixedDrive(store.Path()));
    EXPECT_FALSE(mervane::IsOnFixedDrive(L"\\\\server\\share\\journal.db"));
    EXPECT_FALSE(mervane::IsOnFixedDrive(L""));
}

// What a person can pull out is none, whether its medium comes out or the whole disk with its cable.
TEST(Drive, IsFixedOnlyOnABusInsideTheMachine)
{
    const auto isBuiltIn = [](STORAGE_BUS_TYPE bus, bool isMediumRemovable = false) {
        STORAGE_DEVICE_DESCRIPTOR device{};
        device.BusType = bus;
        device.RemovableMedia = isMediumRemovable;
        return mervane::IsBuiltIn(device);
    };
    for (const STORAGE_BUS_TYPE bus : {BusTypeScsi, BusTypeAta, BusTypeRAID, BusTypeSas, BusTypeSata,
                                       BusTypeMmc, BusTypeVirtual, BusTypeSpaces, BusTypeNvme, BusTypeUfs}) {
        EXPECT_TRUE(isBuiltIn(bus)) << bus;
        EXPECT_FALSE(isBuiltIn(bus, true)) << bus;
    }
    for (const STORAGE_BUS_TYPE bus : {BusTypeUnknown, BusType1394, BusTypeUsb, BusTypeiScsi, BusTypeSd,
                                       BusTypeFileBackedVirtual, static_cast<STORAGE_BUS_TYPE>(0x7E)})
        EXPECT_FALSE(isBuiltIn(bus)) << bus;
}

} // namespace
