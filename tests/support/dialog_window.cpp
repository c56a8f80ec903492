#include "support/dialog_window.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "support/send_input.h"
#include "support/test_windows.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace {

// The dialog manager's own loop: keys pass its translation as they do for a user.
void PumpDialog(HWND dialog)
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (IsDialogMessageW(dialog, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool LiesIn(const RECT& outer, const RECT& inner)
{
    RECT seen{};
    IntersectRect(&seen, &inner, &outer);
    return EqualRect(&seen, &inner) != FALSE;
}

bool MayScroll()
{
    const RECT area = WorkArea();
    return area.bottom - area.top <= 240 && Scale(100) >= 200;
}

void SendCharacter(wchar_t character, DWORD release)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = KEYEVENTF_UNICODE | release;
    EXPECT_EQ(SendInput(1, &input, sizeof input), 1u);
}

} // namespace

HWND DialogWindow::Item(int id) const
{
    HWND item = GetDlgItem(m_window, id);
    EXPECT_NE(item, nullptr) << id;
    return item;
}

std::wstring DialogWindow::Text(int id) const
{
    return WindowText(Item(id));
}

RECT DialogWindow::RectOf(HWND control) const
{
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

void DialogWindow::ExpectOnScreen() const
{
    EXPECT_TRUE(PumpUntil([&] {
        RECT own{};
        GetWindowRect(m_window, &own);
        return LiesIn(WorkArea(), own);
    }));
}

void DialogWindow::ExpectWholeOnScreen() const
{
    if (MayScroll())
        return ExpectInReach();
    ExpectOnScreen();
    for (HWND child = GetWindow(m_window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        EXPECT_TRUE(PumpUntil([&] {
            RECT inside{};
            GetClientRect(m_window, &inside);
            return !IsWindowVisible(child) || LiesIn(inside, RectOf(child));
        })) << GetDlgCtrlID(child);
}

void DialogWindow::ExpectInReach() const
{
    ExpectOnScreen();
    std::set<HWND> reached;
    do {
        HWND focus = GetFocus();
        RECT inside{};
        GetClientRect(m_window, &inside);
        const RECT place = RectOf(focus);
        const RECT start{place.left, place.top, std::min(place.right, place.left + inside.right),
                         std::min(place.bottom, place.top + inside.bottom)};
        EXPECT_TRUE(IsChild(m_window, focus) && LiesIn(inside, start)) << GetDlgCtrlID(focus);
        reached.insert(focus);
        Key(VK_TAB);
    } while (!reached.count(GetFocus()));
    for (const int id : {IDOK, IDCANCEL})
        EXPECT_TRUE(!GetDlgItem(m_window, id) || reached.count(GetDlgItem(m_window, id))) << id;
}

LRESULT DialogWindow::Ask(int id, UINT message, WPARAM wParam, LPARAM lParam) const
{
    return SendMessageW(Item(id), message, wParam, lParam);
}

void DialogWindow::Command(int command, WORD code) const
{
    SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(command, code),
                 reinterpret_cast<LPARAM>(GetDlgItem(m_window, command)));
}

HWND DialogWindow::Field(int id) const
{
    HWND edit = FindWindowExW(Item(id), nullptr, L"Edit", nullptr);
    return edit ? edit : Item(id);
}

void DialogWindow::Focus(int id) const
{
    SetFocus(Field(id));
    PumpDialog(m_window);
    EXPECT_EQ(GetFocus(), Field(id)) << id;
}

void DialogWindow::Click(int id) const
{
    ASSERT_TRUE(IsEnabled(id)) << id;
    RECT client{};
    GetClientRect(Item(id), &client);
    const LPARAM middle = MAKELPARAM(client.right / 2, client.bottom / 2);
    PostMessageW(Item(id), WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(Item(id), WM_LBUTTONUP, 0, middle);
    PumpDialog(m_window);
}

// What a device sends goes to the window in front, which a window manager may make this one a little late.
void DialogWindow::TakeKeyboard() const
{
    if (GetForegroundWindow() != m_window)
        SetForegroundWindow(m_window);
    EXPECT_TRUE(PumpUntil([this] { return GetForegroundWindow() == m_window; }));
}

void DialogWindow::Type(const std::wstring& text) const
{
    TakeKeyboard();
    for (const wchar_t character : text) {
        SendCharacter(character, 0);
        SendCharacter(character, KEYEVENTF_KEYUP);
        PumpDialog(m_window);
    }
}

void DialogWindow::Key(WORD key, bool ctrl, bool shift) const
{
    TakeKeyboard();
    if (ctrl)
        SendKey(VK_CONTROL, true);
    if (shift)
        SendKey(VK_SHIFT, true);
    SendKey(key, true);
    PumpDialog(m_window);
    SendKey(key, false);
    if (shift)
        SendKey(VK_SHIFT, false);
    if (ctrl)
        SendKey(VK_CONTROL, false);
    PumpDialog(m_window);
}

void DialogWindow::AltKey(WORD key) const
{
    TakeKeyboard();
    SendKey(VK_MENU, true);
    SendKey(key, true);
    PumpDialog(m_window);
    SendKey(key, false);
    SendKey(VK_MENU, false);
    PumpDialog(m_window);
}

INT_PTR RunDialog(const std::function<INT_PTR()>& call, const std::function<void(HWND)>& action,
                  INT_PTR leftOpen)
{
    ModalDriver driver([&](HWND window) {
        ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
        action(window);
        if (IsWindowVisible(window)) // a dialog that has ended is hidden
            EndDialog(window, leftOpen);
    });
    const INT_PTR result = call();
    EXPECT_TRUE(driver.Ran());
    return result;
}
