// A dialog of this thread, and the user in front of it.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

class DialogWindow {
  public:
    explicit DialogWindow(HWND window) : m_window(window) {}

    HWND Window() const { return m_window; }
    HWND Item(int id) const;
    std::wstring Text(int id) const;
    bool IsEnabled(int id) const { return IsWindowEnabled(Item(id)) != 0; }
    bool IsChecked(int id) const { return Ask(id, BM_GETCHECK) == BST_CHECKED; }
    RECT Rect(int id) const { return RectOf(Item(id)); }
    RECT RectOf(HWND control) const; // in the dialog's client area
    // The dialog lies on the screen, once a window manager has given it its place and size.
    void ExpectOnScreen() const;
    // And all that it shows lies in it. With everything twice as large on the handheld's screen it may
    // scroll.
    void ExpectWholeOnScreen() const;
    // And the tab key goes round its controls, OK and Cancel among them, each seen, from
    // its start and as far as there is room, when it has the keyboard.
    void ExpectInReach() const;
    LRESULT Ask(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    void Command(int command, WORD code = 0) const; // as the control or menu item would send it
    void Ok() const { Command(IDOK); }
    void Cancel() const { Command(IDCANCEL); }
    // The edit part of a box, else the control itself: what has the focus when the control is in use.
    HWND Field(int id) const;
    void Focus(int id) const;
    bool HasFocus(int id) const { return GetFocus() == Field(id); }
    // The left button goes down and up in the middle of a control, which takes the focus if it wants it.
    void Click(int id) const;
    void SetText(int id, const std::wstring& text) const { SetWindowTextW(Item(id), text.c_str()); }
    // Types into the field that has the focus, through the dialog's own message loop's translation.
    void Type(const std::wstring& text) const;
    void Key(WORD key, bool ctrl = false, bool shift = false) const;
    void AltKey(WORD key) const;

  private:
    void TakeKeyboard() const;

    HWND m_window;
};

// Runs a modal call and lets the action work its dialog; a dialog that the action leaves open ends with
// leftOpen. What the call returned.
INT_PTR RunDialog(const std::function<INT_PTR()>& call, const std::function<void(HWND)>& action,
                  INT_PTR leftOpen);
