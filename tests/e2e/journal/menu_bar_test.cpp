#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"

namespace {

class MenuBar : public JournalWindowTest {
  protected:
    void SetUp() override
    {
        ASSERT_NE(m_journal.Start(), nullptr);
        ASSERT_TRUE(ShowsRows(0));
    }

    // The first item's text of the popup that is open, once it is this one.
    bool ShowsPopupWith(const std::wstring& first)
    {
        return WaitFor([&] {
            HWND popup = FindTopWindow(m_journal.Id(), L"#32768");
            if (!popup)
                return false;
            const auto items = MenuOfPopup(popup).Items();
            return !items.empty() && items[0].text == first;
        });
    }
};

TEST_F(MenuBar, AltAndAMnemonicOpenAMenuAndALetterChooses)
{
    PressKeys({VK_MENU, 'F'});
    ASSERT_TRUE(ShowsPopupWith(L"&New Entry"));
    PressKey('N');
    HWND editor = WaitForEditor();
    ASSERT_NE(editor, nullptr);
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(editor));
}

TEST_F(MenuBar, F10AndTheArrowsGoFromMenuToMenu)
{
    PressKey(VK_F10);
    PressKey(VK_DOWN);
    ASSERT_TRUE(ShowsPopupWith(L"&New Entry"));
    PressKey(VK_RIGHT);
    ASSERT_TRUE(ShowsPopupWith(L"&Cut\tCtrl+X"));
    PressKey(VK_RIGHT);
    ASSERT_TRUE(ShowsPopupWith(L"&Calendar"));
    PressKey(VK_RIGHT);
    ASSERT_TRUE(ShowsPopupWith(L"&Find..."));
    PressKey(VK_RIGHT);
    ASSERT_TRUE(ShowsPopupWith(L"&New Entry"));
    PressKey(VK_LEFT);
    ASSERT_TRUE(ShowsPopupWith(L"&Find..."));
    EXPECT_TRUE(ClosePopups(m_journal.Id()));
}

TEST_F(MenuBar, AnItemThatStartsAProgramHasATipBesideIt)
{
    PressKeys({VK_MENU, 'G'});
    ASSERT_TRUE(ShowsPopupWith(L"&Calendar"));
    HWND tip = WaitForWindow([&] { return FindTopWindow(m_journal.Id(), L"tooltips_class32"); });
    ASSERT_NE(tip, nullptr);
    RECT menu{}, place{};
    GetWindowRect(FindTopWindow(m_journal.Id(), L"#32768"), &menu);
    GetWindowRect(tip, &place);
    EXPECT_GE(place.left + 4, menu.right) << "not over the items";
    EXPECT_LE(place.top, menu.top + 8) << "the first one is highlighted";
    EXPECT_TRUE(ClosePopups(m_journal.Id()));
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(tip); }));
}

TEST_F(MenuBar, TheMouseQuitsFromTheFileMenu)
{
    PressKeys({VK_MENU, 'F'});
    HWND popup = WaitForPopup(m_journal.Id());
    ASSERT_NE(popup, nullptr);
    ASSERT_TRUE(ChooseFromPopup(popup, CMD_QUIT));
    EXPECT_TRUE(m_journal.WaitForEnd());
    EXPECT_EQ(m_journal.ExitCode(), 0u);
}

TEST_F(MenuBar, WithoutASelectionTheEntryItemsAreGrey)
{
    PressKeys({VK_MENU, 'E'});
    HWND popup = WaitForPopup(m_journal.Id());
    ASSERT_NE(popup, nullptr);
    const RemoteMenu menu = MenuOfPopup(popup);
    for (const int id : {CMD_CUT, CMD_COPY, CMD_PASTE, CMD_EDIT_ENTRY, CMD_DELETE_ENTRY})
        EXPECT_FALSE(menu.Find(static_cast<UINT>(id)).enabled) << id;
    EXPECT_EQ(menu.Find(CMD_COPY).text, L"Copy\tCtrl+C") << "the shortcut is shown";
    EXPECT_TRUE(ClosePopups(m_journal.Id()));
}

TEST_F(MenuBar, AboutOpensAndCloses)
{
    PostCommand(Window(), CMD_ABOUT);
    HWND about = WaitForDialog(m_journal.Id(), L"About Journal");
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(TextOf(Control(about, IDC_ABOUT_BUILD)), L"Build (2094)");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(about));
}

} // namespace
