// A dialog of this process and its controls, worked as a user does.
#pragma once

#include <windows.h>

#include <string>

#include "support/test_windows.h"

class DialogWindow {
  public:
    explicit DialogWindow(HWND window) : m_window(window) {}

    HWND Window() const { return m_window; }
    HWND Item(int id) const { return GetDlgItem(m_window, id); }
    std::wstring Text(int id) const { return WindowText(Item(id)); }
    bool IsChecked(int id) const { return IsDlgButtonChecked(m_window, id) == BST_CHECKED; }
    bool IsEnabled(int id) const { return IsWindowEnabled(Item(id)) != FALSE; }
    RECT Place(int id) const { return PlaceOf(Item(id)); }
    // In the dialog's client area.
    RECT PlaceOf(HWND control) const
    {
        RECT rect{};
        GetWindowRect(control, &rect);
        MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }
    LRESULT Ask(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return SendMessageW(Item(id), message, wParam, lParam);
    }
    void Click(int id) const { Ask(id, BM_CLICK); }
    void SetText(int id, const std::wstring& text) const { SetWindowTextW(Item(id), text.c_str()); }
    void Ok() const { SendMessageW(m_window, WM_COMMAND, IDOK, 0); }
    void Cancel() const { SendMessageW(m_window, WM_COMMAND, IDCANCEL, 0); }
    // Through the dialog manager's translation.
    void Press(WPARAM key) const
    {
        MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
        if (!IsDialogMessageW(m_window, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

  private:
    HWND m_window;
};
