#include "editor/bar_keys.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include "support/test_windows.h"

namespace {

enum Command { kFirst = 201, kChecked, kGroupA, kGroupB, kMenu, kGrey };

class BarKeysTest : public testing::Test {
  protected:
    BarKeysTest()
        : m_parent([this](HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT*) {
              if (message == WM_COMMAND)
                  m_log.push_back(LOWORD(wParam));
              if (message == WM_NOTIFY &&
                  reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(TBN_DROPDOWN))
                  m_log.push_back(-reinterpret_cast<NMTOOLBARW*>(lParam)->iItem);
              return false;
          })
    {
        m_bar =
            CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBSTYLE_FLAT,
                            0, 0, 300, 30, m_parent.Handle(), reinterpret_cast<HMENU>(7), nullptr, nullptr);
        EXPECT_NE(m_bar, nullptr);
        SendMessageW(m_bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        Add(kGrey, 0, 0);
        Add(kFirst, TBSTATE_ENABLED, 0);
        Add(0, TBSTATE_ENABLED, BTNS_SEP);
        Add(kChecked, TBSTATE_ENABLED, BTNS_CHECK);
        Add(kGroupA, TBSTATE_ENABLED | TBSTATE_CHECKED, BTNS_CHECKGROUP);
        Add(kGroupB, TBSTATE_ENABLED, BTNS_CHECKGROUP);
        Add(0, TBSTATE_ENABLED, BTNS_SEP);
        Add(kMenu, TBSTATE_ENABLED, BTNS_DROPDOWN);
        AddBarKeys(m_bar);
        SetFocus(m_bar);
    }
    void Add(int command, BYTE state, BYTE style)
    {
        TBBUTTON button{};
        button.idCommand = command;
        button.fsState = state;
        button.fsStyle = style;
        SendMessageW(m_bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    void Press(WPARAM key) { SendMessageW(m_bar, WM_KEYDOWN, key, 0); }
    int Lit()
    {
        const LRESULT index = SendMessageW(m_bar, TB_GETHOTITEM, 0, 0);
        if (index < 0)
            return -1;
        TBBUTTON button{};
        SendMessageW(m_bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
        return button.idCommand;
    }
    bool IsChecked(int command)
    {
        return SendMessageW(m_bar, TB_ISBUTTONCHECKED, static_cast<WPARAM>(command), 0) != 0;
    }

    std::vector<int> m_log;
    TestParent m_parent;
    HWND m_bar = nullptr;
};

TEST_F(BarKeysTest, TheFirstEnabledButtonIsLitFirst)
{
    EXPECT_EQ(Lit(), kFirst);
}

TEST_F(BarKeysTest, ArrowsPassOverSeparatorsAndGreyButtons)
{
    Press(VK_RIGHT);
    EXPECT_EQ(Lit(), kChecked);
    Press(VK_LEFT);
    EXPECT_EQ(Lit(), kFirst);
    Press(VK_LEFT);
    EXPECT_EQ(Lit(), kFirst);
    Press(VK_END);
    EXPECT_EQ(Lit(), kMenu);
    Press(VK_RIGHT);
    EXPECT_EQ(Lit(), kMenu);
    Press(VK_HOME);
    EXPECT_EQ(Lit(), kFirst);
}

TEST_F(BarKeysTest, EnterAndSpaceSendTheCommand)
{
    Press(VK_RETURN);
    Press(VK_SPACE);
    EXPECT_EQ(m_log, (std::vector<int>{kFirst, kFirst}));
}

TEST_F(BarKeysTest, ACheckButtonIsCheckedAndUnchecked)
{
    Press(VK_RIGHT);
    Press(VK_SPACE);
    EXPECT_TRUE(IsChecked(kChecked));
    Press(VK_SPACE);
    EXPECT_FALSE(IsChecked(kChecked));
    EXPECT_EQ(m_log, (std::vector<int>{kChecked, kChecked}));
}

TEST_F(BarKeysTest, AGroupKeepsOneChecked)
{
    for (int i = 0; i < 3; ++i)
        Press(VK_RIGHT);
    ASSERT_EQ(Lit(), kGroupB);
    Press(VK_SPACE);
    EXPECT_TRUE(IsChecked(kGroupB));
    EXPECT_FALSE(IsChecked(kGroupA));
    Press(VK_SPACE);
    EXPECT_TRUE(IsChecked(kGroupB));
}

TEST_F(BarKeysTest, DownDropsAMenuAndPressesNothingElse)
{
    Press(VK_DOWN);
    Press(VK_F4);
    EXPECT_TRUE(m_log.empty());
    Press(VK_END);
    Press(VK_DOWN);
    Press(VK_F4);
    Press(VK_RETURN);
    EXPECT_EQ(m_log, (std::vector<int>{-kMenu, -kMenu, -kMenu}));
}

TEST_F(BarKeysTest, AButtonThatWasGreyedMeanwhileIsNotPressed)
{
    SendMessageW(m_bar, TB_ENABLEBUTTON, kFirst, FALSE);
    Press(VK_RETURN);
    EXPECT_TRUE(m_log.empty());
}

TEST_F(BarKeysTest, NothingIsLitWithoutTheFocus)
{
    SetFocus(m_parent.Handle());
    EXPECT_EQ(Lit(), -1);
}

TEST_F(BarKeysTest, WantsTheArrowsAndEnterOfTheDialogManager)
{
    MSG message{};
    message.message = WM_KEYDOWN;
    message.wParam = VK_RETURN;
    EXPECT_TRUE(SendMessageW(m_bar, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&message)) &
                DLGC_WANTMESSAGE);
    message.wParam = VK_TAB;
    const LRESULT code = SendMessageW(m_bar, WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&message));
    EXPECT_FALSE(code & DLGC_WANTMESSAGE);
    EXPECT_TRUE(code & DLGC_WANTARROWS);
}

} // namespace
