#include "pick/modal_dialog.h"

#include <algorithm>

#include "mervane/file/store_waiter.h"
#include "util/window_metrics.h"

namespace mervane {

namespace {

RECT WorkAreaAt(HWND window)
{
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &info);
    return info.rcWork;
}

// As near to the wanted place as the area allows.
LONG Fit(LONG wanted, LONG length, LONG from, LONG to)
{
    return std::max(from, std::min(wanted, to - length));
}

} // namespace

INT_PTR ModalDialog::Run(const DialogTemplate& contents, HWND owner)
{
    // For a bad owner the system answers 0, which could not be told from a cancelled dialog.
    if (owner && !IsWindow(owner))
        return -1;
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), contents.Get(), owner, Procedure,
                                   reinterpret_cast<LPARAM>(this));
}

INT_PTR CALLBACK ModalDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG) {
        auto* created = reinterpret_cast<ModalDialog*>(lParam);
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        created->m_window = window;
        created->TakeOwnersIcon();
        created->Place();
        return created->OnInit();
    }
    auto* self = reinterpret_cast<ModalDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!self)
        return FALSE;
    const INT_PTR handled = self->OnMessage(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        ForgetDpi(window);
        self->m_window = nullptr;
    }
    return handled;
}

INT_PTR ModalDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (PutOffWhileWaiting(m_window, message, wParam, lParam))
        return TRUE;
    PassToControls(m_window, message, wParam, lParam);
    switch (message) {
    case WM_COMMAND: OnCommandMessage(LOWORD(wParam), HIWORD(wParam)); return TRUE;
    case WM_CLOSE: OnClose(); return TRUE;
    case WM_SIZE: OnSize(); return TRUE;
    case WM_DPICHANGED:
        // The dialog manager scales what the template has, behind this; then the layout is this one's again.
        NoteDpi(m_window, wParam);
        PostMessageW(m_window, WM_SIZE, SIZE_RESTORED, 0);
        return FALSE;
    case WM_GETMINMAXINFO: OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lParam)); return TRUE;
    case WM_NOTIFY:
        if (!OnNotify(reinterpret_cast<NMHDR*>(lParam), &result))
            return FALSE;
        SetWindowLongPtrW(m_window, DWLP_MSGRESULT, result);
        return TRUE;
    default: return FALSE;
    }
}

// Behind a box or a dialog of its own the request is that one's.
void ModalDialog::OnClose()
{
    HWND over = GetLastActivePopup(m_window);
    if (IsWindowEnabled(m_window))
        OnCancel();
    else if (over != m_window)
        PostMessageW(over, WM_CLOSE, 0, 0);
}

// Enter and Esc arrive as commands of these buttons, also while they are disabled.
void ModalDialog::OnCommandMessage(int id, int code)
{
    HWND button = Item(id);
    if (!IsWindowEnabled(m_window))
        return; // another program's message, while a box or a dialog stands over this one
    if (id == IDCANCEL)
        OnCancel();
    else if (id != IDOK)
        OnCommand(id, code);
    else if (!button || IsWindowEnabled(button))
        OnOK();
}

bool ModalDialog::OnNotify(NMHDR*, LRESULT*)
{
    return false;
}

std::wstring ModalDialog::TextOf(int id) const
{
    HWND item = Item(id);
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(item)) + 1, L'\0');
    const int length = GetWindowTextW(item, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<size_t>(length));
    return text;
}

SIZE ModalDialog::Pixels(int width, int height) const
{
    RECT rect{0, 0, width, height};
    MapDialogRect(m_window, &rect);
    return {rect.right, rect.bottom};
}

int ModalDialog::Ask(const std::wstring& text, UINT type) const
{
    wchar_t caption[64];
    GetWindowTextW(m_window, caption, 64);
    return MessageBoxW(m_window, text.c_str(), caption, type);
}

void ModalDialog::TakeOwnersIcon() const
{
    HWND owner = GetWindow(m_window, GW_OWNER);
    for (const WPARAM size : {WPARAM{ICON_SMALL}, WPARAM{ICON_BIG}})
        if (const LRESULT icon = owner ? SendMessageW(owner, WM_GETICON, size, 0) : 0)
            SendMessageW(m_window, WM_SETICON, size, icon);
}

void ModalDialog::Place() const
{
    HWND owner = GetWindow(m_window, GW_OWNER);
    const RECT area = WorkAreaAt(owner);
    RECT around = area, own{};
    if (owner && !IsIconic(owner))
        GetWindowRect(owner, &around);
    GetWindowRect(m_window, &own);
    const LONG width = std::min(own.right - own.left, area.right - area.left);
    const LONG height = std::min(own.bottom - own.top, area.bottom - area.top);
    const LONG x = Fit((around.left + around.right - width) / 2, width, area.left, area.right);
    const LONG y = Fit((around.top + around.bottom - height) / 2, height, area.top, area.bottom);
    SetWindowPos(m_window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace mervane
