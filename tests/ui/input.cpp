#include "ui/input.h"

#include <gtest/gtest.h>

#include "support/send_input.h"
#include "support/test_windows.h"

namespace {

InputScript* g_script = nullptr;

BOOL CALLBACK AddMenu(HWND window, LPARAM menus)
{
    wchar_t name[16];
    if (IsWindowVisible(window) && GetClassNameW(window, name, 16) && wcscmp(name, L"#32768") == 0)
        reinterpret_cast<std::vector<HMENU>*>(menus)->push_back(
            reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0)));
    return TRUE;
}

} // namespace

void KeyDown(WORD key)
{
    SendKey(key, true);
}

void KeyUp(WORD key)
{
    SendKey(key, false);
}

void PressKey(WORD key)
{
    KeyDown(key);
    KeyUp(key);
}

void PressWith(WORD held, WORD key)
{
    KeyDown(held);
    PressKey(key);
    KeyUp(held);
}

void ButtonDown()
{
    SendMouse(MOUSEEVENTF_LEFTDOWN);
}

void ButtonUp()
{
    SendMouse(MOUSEEVENTF_LEFTUP);
}

std::vector<HMENU> OpenMenus()
{
    std::vector<HMENU> menus;
    EnumThreadWindows(GetCurrentThreadId(), AddMenu, reinterpret_cast<LPARAM>(&menus));
    return {menus.rbegin(), menus.rend()}; // windows come from the top
}

HMENU InnermostMenu()
{
    const std::vector<HMENU> menus = OpenMenus();
    return menus.empty() ? nullptr : menus.back();
}

int SelectedItem(HMENU menu)
{
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        if (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_HILITE)
            return i;
    return -1;
}

POINT CenterOf(HWND window, const RECT& rect)
{
    POINT center{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    ClientToScreen(window, &center);
    return center;
}

InputScript& InputScript::Until(const char* what, std::function<bool()> condition)
{
    m_steps.push_back({what, std::move(condition), nullptr});
    return *this;
}

InputScript& InputScript::Do(std::function<void()> action)
{
    m_steps.push_back({"", nullptr, std::move(action)});
    return *this;
}

// The pointer may be taken back by what the display still had to say about it: then it is moved again.
InputScript& InputScript::MoveTo(std::function<POINT()> where)
{
    return Do([where] { SetCursorPos(where().x, where().y); }).Until("mouse in its place", [where] {
        if (IsPointerAt(where()))
            return true;
        SetCursorPos(where().x, where().y);
        return false;
    });
}

InputScript& InputScript::Click(std::function<POINT()> where)
{
    return MoveTo(std::move(where)).Do(ButtonDown).Do(ButtonUp);
}

void InputScript::Run(const std::function<bool(const MSG&)>& translate)
{
    g_script = this;
    m_deadline = GetTickCount64() + kWaitLimit;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, OnTimer);
    MSG message;
    while (m_next < m_steps.size() && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (translate && translate(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    KillTimer(nullptr, timer);
    g_script = nullptr;
}

void CALLBACK InputScript::OnTimer(HWND, UINT, UINT_PTR, DWORD)
{
    if (g_script)
        g_script->TakeSteps();
}

// One action at a time, so that its input is handled before the next one.
void InputScript::TakeSteps()
{
    if (m_busy || m_next >= m_steps.size())
        return;
    m_busy = true;
    const Step& step = m_steps[m_next];
    if (!step.condition || step.condition()) {
        m_deadline = GetTickCount64() + kWaitLimit;
        ++m_next;
        if (step.action)
            step.action();
    } else if (GetTickCount64() > m_deadline) {
        ADD_FAILURE() << "in vain: " << step.what << " (step " << m_next << ")";
        m_next = m_steps.size();
    }
    if (m_next >= m_steps.size())
        EndMenu();
    m_busy = false;
}
