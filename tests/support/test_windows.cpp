#include "support/test_windows.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

WindowRefuser* g_refuser = nullptr;
MessageBoxAnswerer* g_answerer = nullptr;
ModalDriver* g_driver = nullptr;

bool IsDialog(HWND window)
{
    wchar_t name[16];
    return GetClassNameW(window, name, 16) && wcscmp(name, L"#32770") == 0;
}

// A message box is a dialog without a caller's procedure data: its text is the static 0xFFFF.
bool IsMessageBox(HWND window)
{
    return IsDialog(window) && GetDlgItem(window, 0xFFFF) && !GetDlgItem(window, 1000);
}

std::vector<int> OfferedAnswers(HWND box)
{
    std::vector<int> answers;
    for (int id = IDOK; id <= IDCONTINUE; ++id)
        if (HWND button = GetDlgItem(box, id);
            button && (GetWindowLongPtrW(button, GWL_STYLE) & WS_VISIBLE) != 0)
            answers.push_back(id);
    return answers;
}

BOOL CALLBACK NoteWindow(HWND window, LPARAM windows)
{
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

HICON IconOf(HWND box)
{
    for (HWND item = GetWindow(box, GW_CHILD); item; item = GetWindow(item, GW_HWNDNEXT))
        if (const LRESULT icon = SendMessageW(item, STM_GETICON, 0, 0))
            return reinterpret_cast<HICON>(icon);
    return nullptr;
}

} // namespace

void PumpMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool PumpUntil(const std::function<bool()>& condition, DWORD limit)
{
    const ULONGLONG end = GetTickCount64() + limit;
    for (;;) {
        PumpMessages();
        if (condition())
            return true;
        const ULONGLONG now = GetTickCount64();
        if (now >= end)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
}

std::wstring WindowText(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<size_t>(length));
    return text;
}

std::wstring ToolTipText(HWND tips, HWND owner, UINT_PTR tool)
{
    wchar_t text[80] = L"";
    TOOLINFOW asked{};
    asked.cbSize = sizeof asked;
    asked.hwnd = owner;
    asked.uId = tool;
    asked.lpszText = text;
    SendMessageW(tips, TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&asked));
    return text;
}

TestParent::TestParent(Handler onMessage, int width, int height) : m_onMessage(std::move(onMessage))
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"TestParent";
    RegisterClassW(&windowClass);
    m_window = CreateWindowExW(0, L"TestParent", L"Test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, width,
                               height, nullptr, nullptr, windowClass.hInstance, this);
    EXPECT_NE(m_window, nullptr);
}

TestParent::~TestParent()
{
    if (m_window)
        DestroyWindow(m_window);
}

LRESULT CALLBACK TestParent::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* self = reinterpret_cast<TestParent*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    LRESULT result = 0;
    if (self && self->m_onMessage && self->m_onMessage(window, message, wParam, lParam, &result))
        return result;
    if (self && message == WM_NCDESTROY)
        self->m_window = nullptr;
    return DefWindowProcW(window, message, wParam, lParam);
}

WindowRefuser::WindowRefuser(const wchar_t* className, int nth) : m_className(className), m_nth(nth)
{
    g_refuser = this;
}

WindowRefuser::~WindowRefuser()
{
    g_refuser = nullptr;
}

LRESULT CALLBACK WindowRefuser::Hook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_CREATEWND && g_refuser && g_refuser->Refuses(reinterpret_cast<HWND>(wParam)))
        return 1;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool WindowRefuser::Refuses(HWND window)
{
    wchar_t name[64] = L"";
    if (!GetClassNameW(window, name, 64) || m_className != name)
        return false;
    ++m_seen;
    return !m_nth || m_seen == m_nth;
}

MessageBoxAnswerer::MessageBoxAnswerer(std::vector<int> answers) : m_answers(std::move(answers))
{
    g_answerer = this;
}

MessageBoxAnswerer::~MessageBoxAnswerer()
{
    g_answerer = nullptr;
}

LRESULT CALLBACK MessageBoxAnswerer::Hook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && g_answerer) {
        HWND window = reinterpret_cast<HWND>(wParam);
        if (IsMessageBox(window))
            g_answerer->Answer(window);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void MessageBoxAnswerer::Answer(HWND box)
{
    m_boxes.push_back({WindowText(GetDlgItem(box, 0xFFFF)), WindowText(box), GetWindow(box, GW_OWNER),
                       OfferedAnswers(box), IconOf(box)});
    const size_t index = m_boxes.size() - 1 < m_answers.size() ? m_boxes.size() - 1 : m_answers.size() - 1;
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(m_answers[index]), 0);
}

ModalDriver::ModalDriver(std::function<void(HWND)> action) : m_action(std::move(action))
{
    EnumThreadWindows(GetCurrentThreadId(), NoteWindow, reinterpret_cast<LPARAM>(&m_before));
    g_driver = this;
}

ModalDriver::~ModalDriver()
{
    if (m_timer)
        KillTimer(nullptr, m_timer);
    g_driver = nullptr;
}

bool ModalDriver::WasThere(HWND window) const
{
    return std::ranges::find(m_before, window) != m_before.end();
}

// The timer's procedure runs inside the dialog's own loop, once the dialog is built and shown.
LRESULT CALLBACK ModalDriver::Hook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_ACTIVATE && g_driver && !g_driver->m_dialog) {
        HWND window = reinterpret_cast<HWND>(wParam);
        if (IsDialog(window) && !IsMessageBox(window) && !g_driver->WasThere(window)) {
            g_driver->m_dialog = window;
            g_driver->m_timer = SetTimer(nullptr, 0, 10, OnTimer);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK ModalDriver::OnTimer(HWND, UINT, UINT_PTR id, DWORD)
{
    if (!g_driver || g_driver->m_ran)
        return;
    KillTimer(nullptr, id);
    g_driver->m_timer = 0;
    g_driver->m_ran = true;
    g_driver->m_action(g_driver->m_dialog);
}
