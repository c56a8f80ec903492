// Whatever stands in the registry, the journal starts, can be worked and ends.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

struct HostileValue {
    const char* name;
    DWORD type;
    std::string bytes;
};

const std::string kLongText(10'000, 'x');

const HostileValue kValues[] = {
    {"AllBits", REG_DWORD, "\xFF\xFF\xFF\xFF"},
    {"Lowest", REG_DWORD, std::string("\0\0\0\x80", 4)},
    {"Highest", REG_DWORD, "\xFF\xFF\xFF\x7F"},
    {"One", REG_DWORD, std::string("\1\0\0\0", 4)},
    {"Nothing", REG_BINARY, ""},
    {"ThreeBytes", REG_BINARY, "abc"},
    {"FourBytesOfText", REG_SZ, std::string("1\0\0\0", 4)},
    {"OddText", REG_SZ, "odd"},
    {"LongText", REG_SZ, kLongText},
    {"EightBytes", REG_QWORD, std::string(8, '\xFF')},
    {"Texts", REG_MULTI_SZ, std::string("a\0\0\0b\0\0\0\0\0", 10)},
};

class HostileSettings : public JournalWindowTest, public testing::WithParamInterface<HostileValue> {
  protected:
    void StoreEverywhere(const HostileValue& value)
    {
        const auto store = [&](const wchar_t* subkey, const std::wstring& name) {
            ASSERT_TRUE(StoreRawSetting(subkey, name.c_str(), value.type, value.bytes));
        };
        for (const wchar_t* name : {L"ConfirmDelete", L"DispCats", L"DynSIP", L"sort", L"subj0", L"subj1"})
            store(L"Options", name);
        for (const wchar_t* name :
             {L"iCols", L"mstyle", L"mrestore", L"mmax", L"tstyle", L"trestore", L"tmax", L"selType",
              L"scount", L"iZoom", L"wLeft", L"wTop", L"wRight", L"wBottom", L"wMax"})
            store(L"Settings", name);
        for (int i = 0; i < 11; ++i)
            store(L"Settings", L"Column" + std::to_wstring(i));
    }

    // Something of the window is on the screen and its first button can be pressed.
    void ExpectInReach() const
    {
        const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        const RECT button = Buttons().ScreenRect(CMD_NEW_ENTRY);
        RECT seen{};
        EXPECT_TRUE(IntersectRect(&seen, &screen, &button));
        EXPECT_TRUE(EqualRect(&seen, &button));
        EXPECT_GT(List().ColumnCount(), 0);
    }

    // The editor reads settings of its own.
    void ExpectEditorOpens()
    {
        PressKeys({VK_CONTROL, 'N'});
        HWND editor = WaitForEditor();
        ASSERT_NE(editor, nullptr);
        PressKey(VK_ESCAPE);
        ASSERT_TRUE(WaitUntilGone(editor));
    }
};

TEST_P(HostileSettings, DoNotStopIt)
{
    StoreEverywhere(GetParam());
    ASSERT_NE(AddEntry(L"Still here"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
    ExpectInReach();
    ExpectEditorOpens();
    ASSERT_TRUE(Activate(Window()));
    PressKey(VK_DOWN);
    ASSERT_TRUE(WaitFor([&] { return List().SelectedRows() == std::vector{0}; }));
    PressKey(VK_DELETE);
    const RemoteMessageBox box = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(box) << "no value of these says that deleting asks nothing";
    ASSERT_TRUE(box.Answer(IDNO));
    ASSERT_TRUE(m_journal.Close());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
}

// Whatever it filters by, it can be looked at, accepted and cleared.
TEST_P(HostileSettings, DoNotStopTheFilter)
{
    const HostileValue& value = GetParam();
    ASSERT_TRUE(StoreRawSetting(L"Options", L"RememberFilter", value.type, value.bytes));
    for (const wchar_t* name : {L"Active", L"fRange", L"fMonths", L"mLStart", L"mHStart", L"mLEnd", L"mHEnd"})
        ASSERT_TRUE(StoreRawSetting(L"Filter", name, value.type, value.bytes));
    ASSERT_NE(AddEntry(L"Still here"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    for (const int command : {CMD_FILTER_CATEGORIES, CMD_FILTER_MONTHS}) {
        PostCommand(Window(), command);
        HWND dialog = WaitForDialogWith(m_journal.Id(), IDC_MONTH_LIST);
        ASSERT_NE(dialog, nullptr);
        PressButton(dialog, IDOK);
        ASSERT_TRUE(WaitUntilGone(dialog));
    }
    PostCommand(Window(), CMD_CLEAR_FILTER);
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_TRUE(WaitFor([&] { return Buttons().Text(CMD_CONTACTS) == L"None"; }));
    EXPECT_TRUE(m_journal.Close());
}

INSTANTIATE_TEST_SUITE_P(Values, HostileSettings, testing::ValuesIn(kValues),
                         [](const auto& hostile) { return std::string(hostile.param.name); });

// Every property, each as wide as a column can be and with every flag: 106 has no column.
TEST_F(HostileSettings, EveryColumnWithEveryFlag)
{
    for (DWORD i = 0; i < 11; ++i)
        ASSERT_TRUE(StoreSetting(L"Settings", (L"Column" + std::to_wstring(i)).c_str(),
                                 ((111 - i) << 24) | 0xFFFFFF));
    ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", 0xFFFFFFFF));
    ASSERT_NE(AddEntry(L"Still here"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    EXPECT_TRUE(ShowsRows(1));
    EXPECT_EQ(List().ColumnCount(), 10);
    EXPECT_EQ(List().ColumnWidth(0), 4095);
    EXPECT_EQ(List().ColumnTitle(0), L"Contacts");
    EXPECT_TRUE(WaitFor([&] { return List().Text(0, 8) == L"Still here"; }));
    ASSERT_TRUE(m_journal.Close());
    EXPECT_EQ(NumberSetting(L"Settings", L"iCols"), 10u);
}

TEST_F(HostileSettings, UnknownColumnsShowTheDefaultOnes)
{
    ASSERT_TRUE(StoreSetting(L"Settings", L"iCols", 3));
    ASSERT_TRUE(StoreSetting(L"Settings", L"Column0", 0xFFFFFFFF));
    ASSERT_NE(AddEntry(L"Still here"), 0u);
    ASSERT_NE(m_journal.Start(), nullptr);
    ASSERT_TRUE(ShowsRows(1));
    EXPECT_EQ(List().ColumnCount(), 2);
    EXPECT_EQ(List().ColumnTitle(0), L"Date");
    EXPECT_EQ(List().ColumnTitle(1), L"Subject");
}

} // namespace
