#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class Start : public JournalWindowTest {
  protected:
    // Starts over a store that cannot be used: the box is shown and stays, and the program ends after it.
    void ExpectFailedStart()
    {
        ASSERT_TRUE(m_journal.Launch());
        const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
        ASSERT_TRUE(box);
        EXPECT_EQ(box.Text(), L"Internal Main Window Creation Error");
        EXPECT_EQ(box.Caption(), L"Journal");
        EXPECT_TRUE(box.Offers(IDOK));
        EXPECT_FALSE(box.Offers(IDCANCEL));
        EXPECT_EQ(FindTopWindow(m_journal.Id(), L"Journal"), nullptr);
        ASSERT_TRUE(box.Answer(IDOK));
        ASSERT_TRUE(m_journal.WaitForEnd());
        EXPECT_EQ(m_journal.ExitCode(), 0u);
    }

    static bool HasSubkey(const wchar_t* name)
    {
        HKEY key = nullptr;
        const std::wstring path = std::wstring(L"Software\\Quillmarsh\\Journal\\") + name;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
            return false;
        RegCloseKey(key);
        return true;
    }
};

TEST_F(Start, AFileThatIsNoStoreStaysAsItWas)
{
    const std::string junk = "Dear diary,\r\nthis is no store.\r\n";
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), junk));
    ExpectFailedStart();
    EXPECT_EQ(ReadFileBytes(m_store.Path()), junk);
}

TEST_F(Start, AFailedStartStoresNoSetting)
{
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store at all"));
    ExpectFailedStart();
    EXPECT_FALSE(HasSubkey(L"Settings"));
    EXPECT_FALSE(HasSubkey(L"Options"));
    EXPECT_FALSE(HasSubkey(L"Filter"));
}

TEST_F(Start, AFailedStartLeavesStoredSettingsAlone)
{
    ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", 3));
    ASSERT_TRUE(StoreSetting(L"Settings", L"Column0", 0x6B00A01D));
    ASSERT_TRUE(StoreSetting(L"Settings", L"mrestore", 321));
    ASSERT_TRUE(StoreSetting(L"Settings", L"wLeft", 17));
    ASSERT_TRUE(WriteFileBytes(m_store.Path(), "no store at all"));
    ExpectFailedStart();
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
    ExpectFailedStart();
    EXPECT_EQ(ReadFileBytes(m_store.Path()), bytes);
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

TEST_F(Start, HostileSettingsDoNotStopIt)
{
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"mmax", L"tstyle", L"trestore", L"tmax", L"iCols",
                                L"Column0", L"Column1", L"wLeft", L"wTop", L"wRight", L"wBottom", L"wMax"})
        ASSERT_TRUE(StoreSetting(L"Settings", name, 0xFFFFFFFF));
    ASSERT_TRUE(StoreSetting(L"Options", L"sort", 0xFFFFFFFF));
    ASSERT_NE(AddEntry(L"Still here"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_TRUE(m_journal.Close());
}

TEST_F(Start, SettingsOfOtherTypesDoNotStopIt)
{
    for (const wchar_t* name : {L"mstyle", L"mrestore", L"tstyle", L"iCols", L"Column0", L"wLeft"})
        ASSERT_TRUE(StoreSetting(L"Settings", name, std::wstring(5000, L'x')));
    ASSERT_TRUE(StoreSetting(L"Options", L"sort", std::wstring(L"date")));
    ASSERT_NE(AddEntry(L"Still here"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_TRUE(m_journal.Close());
}

} // namespace
