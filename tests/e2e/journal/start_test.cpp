#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class Start : public JournalWindowTest {
  protected:
    // Starts over a store that cannot be used: the box is shown and stays, and the program ends after it.
    // reason: a part of the second box's sentence
    void ExpectFailedStart(const std::wstring& reason)
    {
        ASSERT_TRUE(m_journal.Launch());
        const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(box);
        EXPECT_EQ(box.Text(), L"Internal Main Window Creation Error");
        EXPECT_EQ(box.Caption(), L"Journal");
        EXPECT_TRUE(box.Offers(IDOK));
        EXPECT_FALSE(box.Offers(IDCANCEL));
        EXPECT_EQ(FindTopWindow(m_journal.Id(), L"Journal"), nullptr);
        EXPECT_EQ(GetWindow(box.Handle(), GW_OWNER), nullptr);
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == box.Handle(); })) << "it is seen";
        EXPECT_EQ(WaitForInputIdle(m_journal.Handle(), kRemoteLimit), 0u);
        EXPECT_TRUE(IsWindowVisible(box.Handle())) << "and stays";
        ASSERT_TRUE(box.Answer(IDOK));
        ExpectReason(reason);
        ASSERT_TRUE(m_journal.WaitForEnd());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
    }

    void ExpectReason(const std::wstring& reason)
    {
        const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(box);
        EXPECT_NE(box.Text().find(m_store.Path()), std::wstring::npos) << "which file";
        EXPECT_NE(box.Text().find(reason), std::wstring::npos) << "and why";
        ASSERT_TRUE(box.Answer(IDOK));
    }

    static void ExpectNoSettings()
    {
        for (const wchar_t* subkey : {L"Settings", L"Options", L"Filter"})
            EXPECT_FALSE(HasSettings(subkey));
    }
};

TEST_F(Start, AFileThatIsNoStoreStaysAsItWas)
{
    const std::string junk = "Dear diary,\r\nthis is no store.\r\n";
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), junk));
    ExpectFailedStart(L"not a journal");
    EXPECT_EQ(ReadFileBytes(m_store.Path()), junk);
}

TEST_F(Start, AFailedStartStoresNoSetting)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store at all"));
    ExpectFailedStart(L"not a journal");
    ExpectNoSettings();
}

TEST_F(Start, AFailedStartLeavesStoredSettingsAlone)
{
    ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", 3));
    ASSERT_TRUE(StoreSetting(L"Settings", L"Column0", 0x6B00A01D));
    ASSERT_TRUE(StoreSetting(L"Settings", L"mrestore", 321));
    ASSERT_TRUE(StoreSetting(L"Settings", L"wLeft", 17));
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store at all"));
    ExpectFailedStart(L"not a journal");
    EXPECT_EQ(NumberSetting(L"Settings", L"iCols"), 3u);
    EXPECT_EQ(NumberSetting(L"Settings", L"Column0"), 0x6B00A01Du);
    EXPECT_EQ(NumberSetting(L"Settings", L"Column1"), std::nullopt);
    EXPECT_EQ(NumberSetting(L"Settings", L"mrestore"), 321u);
    EXPECT_EQ(NumberSetting(L"Settings", L"wLeft"), 17u);
}

TEST_F(Start, ANewerStoreStaysAsItWas)
{
    ASSERT_NE(AddEntry(L"Kept"), 0u);
    std::string bytes = ReadFileBytes(m_store.Path());
    ASSERT_GT(bytes.size(), 100u);
    bytes[60] = 0x7F; // the version, which SQLite keeps big-endian at offset 60
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), bytes));
    ExpectFailedStart(L"a newer version");
    EXPECT_EQ(ReadFileBytes(m_store.Path()), bytes);
    ExpectNoSettings();
}

// Another program keeps the file to itself.
TEST_F(Start, AStoreThatCannotBeOpenedStaysAsItWas)
{
    ASSERT_NE(AddEntry(L"Kept"), 0u);
    const std::string bytes = ReadFileBytes(m_store.Path());
    {
        HANDLE file = CreateFileW(m_store.Path().c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        const UniqueKernelHandle owner(file);
        ExpectFailedStart(L"locked");
    }
    EXPECT_EQ(ReadFileBytes(m_store.Path()), bytes);
    ExpectNoSettings();
    ASSERT_NE(m_journal.Start(), nullptr) << "nothing is left of the failure";
    EXPECT_TRUE(ShowsRows(1));
}

// Another program holds SQLite's lock for longer than anyone waits.
TEST_F(Start, ALockedStoreStaysAsItWas)
{
    ASSERT_NE(AddEntry(L"Kept"), 0u);
    const std::string bytes = ReadFileBytes(m_store.Path());
    {
        const StoreLock lock(m_store.Path());
        ASSERT_TRUE(lock.IsHeld());
        ExpectFailedStart(L"locked");
    }
    EXPECT_EQ(ReadFileBytes(m_store.Path()), bytes);
    ExpectNoSettings();
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
}

TEST_F(Start, AFolderInTheStoresPlaceStays)
{
    ASSERT_TRUE(CreateDirectoryW(m_store.Path().c_str(), nullptr));
    ExpectFailedStart(L"a folder");
    ExpectNoSettings();
    EXPECT_TRUE(RemoveDirectoryW(m_store.Path().c_str())) << "it is empty";
}

TEST_F(Start, ASecondStartBringsTheFirstOneForward)
{
    HWND first = m_journal.Start();
    ASSERT_NE(first, nullptr);
    ShowWindow(first, SW_MINIMIZE);
    ASSERT_TRUE(WaitFor([&] { return IsIconic(first) != 0; }));
    JournalProcess second;
    ASSERT_TRUE(second.Launch());
    ASSERT_TRUE(second.WaitForEnd());
    EXPECT_EQ(second.ExitCode(), 0u);
    EXPECT_TRUE(WaitFor([&] { return !IsIconic(first) && GetForegroundWindow() == first; }));
    EXPECT_FALSE(HasMessageBox(m_journal.Id()));
}

TEST_F(Start, ItsExitCodeIsThatOfTheQuitMessage)
{
    HWND window = m_journal.Start();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(PostThreadMessageW(GetWindowThreadProcessId(window, nullptr), WM_QUIT, 42, 0));
    ASSERT_TRUE(m_journal.WaitForEnd());
    EXPECT_EQ(m_journal.ExitCode(), 42u);
}

// The window is there first, and nothing of it is touched behind the box.
TEST_F(Start, WhatWasSetAsideIsToldOnce)
{
    ASSERT_NE(AddEntry(L"Kept", kNoon), 0u);
    ASSERT_TRUE(WriteFileBytes(m_store.Path() + L"-wal", std::string(5000, 'x')));
    ASSERT_TRUE(m_journal.Launch());
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box);
    HWND window = GetWindow(box.Handle(), GW_OWNER);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_NE(box.Text().find(m_store.Path() + L"-wal.set-aside-2"), std::wstring::npos);
    EXPECT_FALSE(IsWindowEnabled(window));
    ASSERT_TRUE(box.Answer(IDOK));
    ASSERT_EQ(m_journal.WaitForMainWindow(), window);
    EXPECT_TRUE(ShowsRows(1));
    ASSERT_TRUE(m_journal.Close());
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_FALSE(HasMessageBox(m_journal.Id()));
}

} // namespace
