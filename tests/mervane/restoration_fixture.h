// A store that is broken, with its backups, and what becomes of its files.
#pragma once

#include <gtest/gtest.h>

#include <map>

#include "mervane/backup/restoration.h"
#include "records.h"
#include "support/held_file.h"
#include "support/test_store.h"
#include "watched_files.h"

inline constexpr mervane::BackupDay kToday{std::chrono::year(2026), std::chrono::month(2),
                                           std::chrono::day(10)};
inline constexpr const wchar_t* kNeighbours[] = {L"-wal", L"-shm", L"-journal"};

// A file that another program has open, however long this one waits.
inline HeldFile OpenElsewhere(const std::wstring& path)
{
    return HeldFile(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE);
}

// As FindFirstFileW in a folder that may not be listed.
inline HANDLE WINAPI ListsNothing(LPCWSTR, LPWIN32_FIND_DATAW)
{
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

class BrokenStore : public testing::Test {
  protected:
    const std::wstring& Path() const { return m_store.Path(); }

    // A store with so many entries, closed.
    void MakeStore(int entries)
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        for (int i = 0; i < entries; ++i)
            ASSERT_NE(Sent().Text(kSubject, L"s").Text(kBody, std::wstring(9000, L'x')).Write(journal), 0u);
    }
    std::wstring BackupOf(const wchar_t* day) const
    {
        std::wstring name = Path().substr(Path().find_last_of(L'\\') + 1);
        name.resize(name.size() - 3);
        return BackupFolderOf(Path()) + name + L"-" + day + L".db";
    }
    // What the store is now, under the name of a day's backup.
    void KeepAs(const wchar_t* day)
    {
        CreateDirectoryW(BackupFolderOf(Path()).c_str(), nullptr);
        ASSERT_TRUE(CopyFileW(Path().c_str(), BackupOf(day).c_str(), TRUE));
    }
    void Cut(const std::wstring& path)
    {
        std::string bytes = ReadFileBytes(path);
        ASSERT_GT(bytes.size(), 4096u);
        bytes.resize(4096);
        ASSERT_TRUE(WriteFileBytes(path, bytes));
    }
    // Two entries in the backup, three in the store, which has been cut off, with a neighbour of each kind.
    void BreakAll()
    {
        MakeStore(2);
        KeepAs(L"2026-02-09");
        MakeStore(1);
        Cut(Path());
        for (const wchar_t* suffix : kNeighbours)
            ASSERT_TRUE(WriteFileBytes(Path() + suffix, "bytes of " + std::to_string(wcslen(suffix))));
    }
    // All files whose names begin as the store's, with their bytes.
    std::map<std::wstring, std::string> Files() const
    {
        std::map<std::wstring, std::string> files;
        WIN32_FIND_DATAW data;
        HANDLE search = FindFirstFileW((Path() + L"*").c_str(), &data);
        for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &data))
            files[data.cFileName] =
                ReadFileBytes(Path().substr(0, Path().find_last_of(L'\\') + 1) + data.cFileName);
        FindClose(search);
        return files;
    }
    void ExpectOpens(DWORD entries)
    {
        DbJournal journal;
        ASSERT_EQ(journal.Open(nullptr), 1);
        EXPECT_EQ(journal.RecordCount(), entries);
        EXPECT_NE(AddEntry(journal, L"more"), 0u);
    }
    // The files that were the store's are called this now.
    void ExpectKept(const std::wstring& keptAs, const std::map<std::wstring, std::string>& before)
    {
        const std::wstring name = Path().substr(Path().find_last_of(L'\\') + 1);
        EXPECT_TRUE(ReadFileBytes(keptAs) == before.at(name));
        for (const wchar_t* suffix : kNeighbours)
            EXPECT_TRUE(ReadFileBytes(keptAs + suffix) == before.at(name + suffix)) << suffix;
    }
    // The restoration's copy, before it has the store's name.
    static std::wstring CopyOf(const mervane::Restoration& restoration)
    {
        std::wstring name = restoration.KeptAs();
        const std::wstring word = L".damaged-";
        return name.replace(name.rfind(word), word.size(), L".restoring-");
    }

    TestStore m_store;
};
