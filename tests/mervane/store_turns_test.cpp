// Programs open and close a store one after the other.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "mervane/db_journal.h"
#include "peer_process.h"
#include "records.h"
#include "support/import_watch.h"
#include "support/test_store.h"

namespace {

// Sees the program's turns. What another program does at the moment is the test's to say.
class Turns {
  public:
    Turns() { s_current = this; }
    ~Turns() { s_current = nullptr; }

    std::function<void()> atWait = [] {}; // while another program has the turn
    std::function<void()> atEnd = [] {};  // when this one gives it up
    std::vector<std::wstring> names;
    std::vector<DWORD> limits; // of the waits, in milliseconds

  private:
    static HANDLE WINAPI Make(LPSECURITY_ATTRIBUTES security, BOOL owned, LPCWSTR name)
    {
        s_current->names.push_back(name);
        return s_current->m_mutex = s_current->m_made.Original()(security, owned, name);
    }
    static DWORD WINAPI Wait(HANDLE object, DWORD limit)
    {
        if (object == s_current->m_mutex) {
            s_current->limits.push_back(limit);
            s_current->atWait();
        }
        return s_current->m_waited.Original()(object, limit);
    }
    static BOOL WINAPI EndTurn(HANDLE mutex)
    {
        if (mutex == s_current->m_mutex)
            s_current->atEnd();
        return s_current->m_ended.Original()(mutex);
    }

    static inline Turns* s_current;
    HANDLE m_mutex = nullptr; // of the turn that was asked for last
    const ImportWatch<decltype(&CreateMutexW)> m_made{&__imp_CreateMutexW, Make};
    const ImportWatch<decltype(&WaitForSingleObject)> m_waited{&__imp_WaitForSingleObject, Wait};
    const ImportWatch<decltype(&ReleaseMutex)> m_ended{&__imp_ReleaseMutex, EndTurn};
};

bool IsThere(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

TEST(StoreTurns, WhatAnotherProgramIsJustMakingIsNotLookedAt)
{
    const TestStore store;
    ASSERT_TRUE(WriteFileBytes(store.Path(), std::string(200, 'x'))); // no store yet
    Turns turns;
    turns.atWait = [&] { EXPECT_TRUE(DeleteFileW(store.Path().c_str())); };
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(turns.limits, std::vector<DWORD>{10'000});
    turns.atWait = [] {};
}

TEST(StoreTurns, NobodyWaitsForAStoreThatIsOpen)
{
    const TestStore store;
    Turns turns;
    bool isMade = false;
    turns.atEnd = [&] { isMade = IsThere(store.Path() + L"-wal"); };
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_TRUE(isMade);
    EXPECT_EQ(PeerProcess::Run(L"write theirs"), 0u);
    EXPECT_EQ(journal.RecordCount(), 1u);
}

TEST(StoreTurns, ARefusedOneEndsItsTurn)
{
    const TestStore store;
    ASSERT_TRUE(WriteFileBytes(store.Path(), std::string(200, 'x')));
    int ended = 0;
    Turns turns;
    turns.atEnd = [&] { ++ended; };
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_EQ(ended, 1);
}

// The log goes into the file then, and the file and the log are not of one time for a while.
TEST(StoreTurns, AStoreIsClosedInATurn)
{
    const TestStore store;
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    ASSERT_NE(AddEntry(journal, L"mine"), 0u);
    const std::wstring log = store.Path() + L"-wal";
    Turns turns;
    turns.atWait = [&] { EXPECT_TRUE(IsThere(log)); };
    int ended = 0;
    turns.atEnd = [&] {
        ++ended;
        EXPECT_FALSE(IsThere(log));
    };
    EXPECT_EQ(journal.Close(), 1);
    EXPECT_EQ(turns.limits, std::vector<DWORD>{2'500});
    EXPECT_EQ(ended, 1);
}

TEST(StoreTurns, EachStoreHasItsOwn)
{
    const Turns turns;
    const auto open = [] {
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 1);
    };
    {
        const TestStore first;
        open();
        std::wstring shouted = first.Path();
        CharUpperW(shouted.data());
        SetEnvironmentVariableW(L"MERVANE_STORE", shouted.c_str());
        open();
    }
    const TestStore second;
    open();
    ASSERT_EQ(turns.names.size(), 6u) << "one for the opening, one for the end";
    EXPECT_EQ(turns.names[0], turns.names[1]);
    EXPECT_EQ(turns.names[0], turns.names[2]) << "whatever its name's case";
    EXPECT_NE(turns.names[0], turns.names[4]);
    EXPECT_TRUE(turns.names[0].starts_with(L"Local\\")) << turns.names[0];
}

} // namespace
