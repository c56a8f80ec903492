// Where rescue files lie, who takes them over, and which of them stay.
#include "editor/rescue_file.h"

#include <gtest/gtest.h>

#include "support/held_file.h"
#include "support/import_watch.h"
#include "support/rescue_folder.h"
#include "support/test_store.h"

namespace {

class RescueFileTest : public testing::Test {
  protected:
    static RescueState State(const std::wstring& subject, uint64_t store = 5)
    {
        RescueState state;
        state.store = store;
        state.entry.subject = subject;
        return state;
    }
    // As a program that is killed leaves it.
    static bool Leave(const std::wstring& subject, uint64_t store = 5)
    {
        RescueFile file;
        return file.Write(State(subject, store));
    }
    static std::wstring Subject(const RescueFile& file)
    {
        const auto state = file.Read();
        return state ? state->entry.subject : L"unreadable";
    }

    RescueFolder m_folder;
};

TEST_F(RescueFileTest, IsNotFoundWhileSomebodyWorksOnIt)
{
    RescueFile file;
    ASSERT_TRUE(file.Write(State(L"Mine")));
    EXPECT_EQ(m_folder.Unsaved(), 1u);
    EXPECT_TRUE(RescueFile::FindLeft(5).empty());
    file = RescueFile();
    EXPECT_TRUE(m_folder.Files(L".lock").empty());
    const auto found = RescueFile::FindLeft(5);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(Subject(found[0]), L"Mine");
    EXPECT_TRUE(RescueFile::FindLeft(5).empty()) << "it has been taken over";
}

// A power cut leaves the lock's file.
TEST_F(RescueFileTest, IsFoundBesideALockThatNobodyHolds)
{
    ASSERT_TRUE(Leave(L"Mine"));
    ASSERT_TRUE(WriteFileBytes(m_folder.Files(L".rescue")[0] + L".lock", ""));
    EXPECT_EQ(RescueFile::FindLeft(5).size(), 1u);
}

TEST_F(RescueFileTest, IsOfOneStore)
{
    ASSERT_TRUE(Leave(L"Theirs", 6));
    EXPECT_TRUE(RescueFile::FindLeft(5).empty());
    EXPECT_EQ(RescueFile::FindLeft(6).size(), 1u);
}

TEST_F(RescueFileTest, EachHasItsOwn)
{
    RescueFile first;
    RescueFile second;
    ASSERT_TRUE(first.Write(State(L"First")));
    ASSERT_TRUE(second.Write(State(L"Second")));
    ASSERT_TRUE(first.Write(State(L"First again")));
    EXPECT_EQ(m_folder.Unsaved(), 2u);
    EXPECT_EQ(Subject(first), L"First again");
    EXPECT_EQ(Subject(second), L"Second");
    EXPECT_TRUE(second.Remove());
    EXPECT_TRUE(first.Remove());
    EXPECT_TRUE(m_folder.Files().empty());
    ASSERT_TRUE(first.Write(State(L"And again")));
    EXPECT_EQ(m_folder.Unsaved(), 1u);
}

// An earlier process may have had the same number.
TEST_F(RescueFileTest, OneThatWasLeftIsNotWrittenOver)
{
    ASSERT_TRUE(Leave(L"Left"));
    ASSERT_TRUE(Leave(L"Left too"));
    const auto found = RescueFile::FindLeft(5);
    ASSERT_EQ(found.size(), 2u);
}

BOOL WINAPI WriteNothing(HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED)
{
    *written = 0;
    return FALSE;
}

TEST_F(RescueFileTest, AWriteThatFailsLeavesTheOneBefore)
{
    RescueFile file;
    ASSERT_TRUE(file.Write(State(L"Before")));
    {
        const ImportWatch<decltype(&WriteFile)> full(&__imp_WriteFile, WriteNothing);
        EXPECT_FALSE(file.Write(State(L"After")));
    }
    EXPECT_EQ(Subject(file), L"Before");
    EXPECT_TRUE(m_folder.Files(L".new").empty());
}

TEST_F(RescueFileTest, WhatLiesWhereItIsWrittenFirstIsPassedBy)
{
    RescueFile file;
    ASSERT_TRUE(file.Write(State(L"Before")));
    const std::wstring path = m_folder.Files(L".rescue")[0];
    ASSERT_TRUE(WriteFileBytes(path + L".new", "half of an earlier one"));
    EXPECT_TRUE(file.Write(State(L"After")));
    EXPECT_TRUE(m_folder.Files(L".new").empty());
    ASSERT_TRUE(CreateDirectoryW((path + L".new").c_str(), nullptr));
    EXPECT_TRUE(file.Write(State(L"Later")));
    EXPECT_EQ(Subject(file), L"Later");
}

BOOL WINAPI DeleteNothing(LPCWSTR)
{
    SetLastError(ERROR_SHARING_VIOLATION);
    return FALSE;
}

TEST_F(RescueFileTest, OneThatCannotBeDeletedIsStillSomebodys)
{
    RescueFile file;
    ASSERT_TRUE(file.Write(State(L"Mine")));
    {
        const ImportWatch<decltype(&DeleteFileW)> held(&__imp_DeleteFileW, DeleteNothing);
        EXPECT_FALSE(file.Remove());
    }
    EXPECT_TRUE(RescueFile::FindLeft(5).empty());
    EXPECT_TRUE(file.Remove());
    EXPECT_TRUE(m_folder.Files().empty());
}

TEST_F(RescueFileTest, OneThatIsHeldForAMomentIsReplacedAndDeletedAllTheSame)
{
    RescueFile file;
    ASSERT_TRUE(file.Write(State(L"Mine")));
    {
        const HeldFile held(m_folder.Files(L".rescue")[0], 2);
        EXPECT_TRUE(file.Write(State(L"More")));
        EXPECT_EQ(held.Waits(), 2);
    }
    const HeldFile held(m_folder.Files(L".rescue")[0], 2);
    EXPECT_TRUE(file.Remove());
    EXPECT_TRUE(m_folder.Files().empty());
}

TEST_F(RescueFileTest, OneThatIsHeldForAMomentIsKeptAllTheSame)
{
    ASSERT_TRUE(Leave(L"Mine"));
    auto left = RescueFile::FindLeft(5);
    ASSERT_EQ(left.size(), 1u);
    const HeldFile held(m_folder.Files(L".rescue")[0], 2);
    left[0].SetAside();
    EXPECT_EQ(m_folder.Files(L".kept").size(), 1u);
}

TEST_F(RescueFileTest, ADamagedOneIsNotFoundAndStays)
{
    ASSERT_TRUE(Leave(L"Mine"));
    const std::wstring path = m_folder.Files(L".rescue")[0];
    std::string bytes = ReadFileBytes(path);
    bytes.back() ^= 1;
    ASSERT_TRUE(WriteFileBytes(path, bytes));
    EXPECT_TRUE(RescueFile::FindLeft(5).empty());
    EXPECT_EQ(ReadFileBytes(path), bytes);
}

TEST_F(RescueFileTest, OneSetAsideIsKeptAndNotFoundAgain)
{
    ASSERT_TRUE(Leave(L"Mine"));
    const std::string bytes = ReadFileBytes(m_folder.Files(L".rescue")[0]);
    RescueFile::FindLeft(5)[0].SetAside();
    EXPECT_TRUE(RescueFile::FindLeft(5).empty());
    const auto kept = m_folder.Files();
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_TRUE(kept[0].ends_with(L".kept"));
    EXPECT_EQ(ReadFileBytes(kept[0]), bytes);
}

TEST_F(RescueFileTest, TheNewestTenOfAStoreAreKept)
{
    ASSERT_TRUE(Leave(L"Of another", 6));
    RescueFile::FindLeft(6)[0].SetAside();
    for (int i = 0; i < 12; ++i) {
        ASSERT_TRUE(Leave(L"Entry " + std::to_wstring(i)));
        RescueFile::FindLeft(5)[0].SetAside();
        Sleep(20); // so that their times differ
    }
    std::vector<std::wstring> subjects;
    for (const std::wstring& path : m_folder.Files(L".kept"))
        subjects.push_back(ReadRescue(ReadFileBytes(path)).value_or(RescueState()).entry.subject);
    EXPECT_EQ(subjects.size(), 11u);
    for (const wchar_t* gone : {L"Entry 0", L"Entry 1"})
        EXPECT_EQ(std::count(subjects.begin(), subjects.end(), gone), 0) << gone;
}

TEST_F(RescueFileTest, WithoutAFolderNothingIsWritten)
{
    SetEnvironmentVariableW(L"APPDATA", nullptr);
    EXPECT_FALSE(Leave(L"Mine"));
    EXPECT_TRUE(RescueFile::FindLeft(5).empty());
}

decltype(&GetFileAttributesW) g_attributes = nullptr;

DWORD WINAPI TellNothingOfRescues(LPCWSTR path)
{
    if (!std::wstring_view(path).ends_with(L".rescue"))
        return g_attributes(path);
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_FILE_ATTRIBUTES;
}

// It is not known that nothing is there.
TEST_F(RescueFileTest, OneThatTheSystemDoesNotTellOfIsNotWrittenOver)
{
    ASSERT_TRUE(Leave(L"Left"));
    const std::string left = ReadFileBytes(m_folder.Files(L".rescue")[0]);
    RescueFile file;
    {
        g_attributes = __imp_GetFileAttributesW;
        const ImportWatch<decltype(&GetFileAttributesW)> watch(&__imp_GetFileAttributesW,
                                                               TellNothingOfRescues);
        EXPECT_FALSE(file.Write(State(L"Mine")));
    }
    ASSERT_EQ(m_folder.Unsaved(), 1u);
    EXPECT_EQ(ReadFileBytes(m_folder.Files(L".rescue")[0]), left);
    EXPECT_TRUE(file.Write(State(L"Mine"))) << "it is tried again";
    EXPECT_EQ(m_folder.Unsaved(), 2u);
}

decltype(&GetFileAttributesExW) g_times = nullptr;
std::wstring g_timeless;

BOOL WINAPI TellNoTimeOfOne(LPCWSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID data)
{
    if (path != g_timeless)
        return g_times(path, level, data);
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

// It is not known which is the oldest.
TEST_F(RescueFileTest, NoKeptOneGoesWhereATimeIsUnknown)
{
    for (size_t i = 0; i <= RescueFile::kKept; ++i) {
        ASSERT_TRUE(Leave(L"Entry " + std::to_wstring(i)));
        g_times = __imp_GetFileAttributesExW;
        const ImportWatch<decltype(&GetFileAttributesExW)> watch(&__imp_GetFileAttributesExW,
                                                                 TellNoTimeOfOne);
        RescueFile::FindLeft(5)[0].SetAside();
        if (i == 0)
            g_timeless = m_folder.Files(L".kept")[0];
    }
    EXPECT_EQ(m_folder.Files(L".kept").size(), RescueFile::kKept + 1);
}

} // namespace
