#include "ui/placeholder_edit.h"

#include <gtest/gtest.h>

#include "support/test_windows.h"
#include "ui/dialog_fixture.h"
#include "ui/ui_test_resource.h"
#include "util/owners.h"

namespace {

constexpr const wchar_t* kPlaceholder = L"<Nothing>";

class PlaceholderEdit : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_NE(m_edit, nullptr);
        AddPlaceholder(m_edit, kPlaceholder);
        SetFocus(m_edit);
    }

    std::pair<DWORD, DWORD> Selection() const
    {
        DWORD start = 99, end = 99;
        SendMessageW(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        return {start, end};
    }
    bool IsAllSelected() const { return Selection() == std::pair<DWORD, DWORD>(0, wcslen(kPlaceholder)); }
    void Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        SendMessageW(m_edit, message, wParam, lParam);
    }
    void Click() const
    {
        Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
        Send(WM_LBUTTONUP, 0, MAKELPARAM(20, 5));
    }
    void Type(wchar_t letter) const { Send(WM_CHAR, static_cast<WPARAM>(letter), 1); }

    TestParent m_parent;
    HWND m_edit = CreateWindowExW(0, WC_EDITW, kPlaceholder, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0, 0,
                                  200, 24, m_parent.Handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
};

TEST_F(PlaceholderEdit, IsSelectedWholeHoweverOftenItIsClicked)
{
    for (int click = 0; click < 3; ++click) {
        Click();
        EXPECT_TRUE(IsAllSelected()) << click;
    }
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(20, 5));
    EXPECT_TRUE(IsAllSelected());
    Type(L'x');
    EXPECT_EQ(WindowText(m_edit), L"x");
}

TEST_F(PlaceholderEdit, NoDragSelectsAPartOfIt)
{
    Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
    Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(50, 5));
    Send(WM_LBUTTONUP, 0, MAKELPARAM(50, 5));
    EXPECT_TRUE(IsAllSelected());
}

TEST_F(PlaceholderEdit, NoKeyMovesTheCaretIntoIt)
{
    for (const int key : {VK_LEFT, VK_RIGHT, VK_HOME, VK_END}) {
        Send(WM_KEYDOWN, static_cast<WPARAM>(key), 1);
        EXPECT_TRUE(IsAllSelected()) << key;
    }
    Type(L'x');
    EXPECT_EQ(WindowText(m_edit), L"x");
}

TEST_F(PlaceholderEdit, IsSelectedAgainWhereTheLastTypingIsUndone)
{
    Click();
    Type(L'x');
    Send(EM_UNDO);
    ASSERT_EQ(WindowText(m_edit), kPlaceholder);
    EXPECT_TRUE(IsAllSelected());
}

TEST_F(PlaceholderEdit, APersonsOwnTextIsLeftAlone)
{
    for (const wchar_t* text : {L"<Nothing", L"<Nothing>!", L"<nothing>", L"Mine"}) {
        SetWindowTextW(m_edit, text);
        Send(EM_SETSEL, 0, 0);
        Send(WM_KEYDOWN, VK_RIGHT, 1);
        EXPECT_EQ(Selection(), (std::pair<DWORD, DWORD>(1, 1))) << WindowText(m_edit);
        Click();
        EXPECT_EQ(Selection().first, Selection().second);
    }
}

// A dialog asks it for the colours of its controls.
TEST(PlaceholderColour, IsGreyUntilTheresText)
{
    TestDialog dialog;
    RunDialog(dialog, [&dialog](HWND window) {
        HWND edit = dialog.GetItem(ITEM_EDIT);
        const UniqueHandle<HDC, DeleteDC> dc(CreateCompatibleDC(nullptr));
        const auto colour = [&] {
            SetTextColor(dc.get(), RGB(1, 2, 3));
            SendMessageW(window, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc.get()),
                         reinterpret_cast<LPARAM>(edit));
            return GetTextColor(dc.get());
        };
        SetWindowTextW(edit, kPlaceholder);
        const COLORREF own = colour();
        AddPlaceholder(edit, kPlaceholder);
        EXPECT_EQ(colour(), GetSysColor(COLOR_GRAYTEXT));
        SetWindowTextW(edit, L"Mine");
        EXPECT_EQ(colour(), own);
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

} // namespace
