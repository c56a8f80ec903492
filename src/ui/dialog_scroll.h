// Keeps a dialog within the work area: what has no room is scrolled to.
#pragma once

#include <windows.h>

#include "ui/window_scroll.h"

class DialogScroll {
  public:
    // Makes a dialog that is larger than the work area as large as there is room, scrolled to its first
    // control; one whose edges can be dragged lays itself out in that instead. One that scrolls is measured
    // anew, whatever its resolution and its place are now. False where it has all its room and had it before.
    bool Fit(HWND dialog, const RECT& area);
    // Back to where the controls stand as they were made: before something scales their places.
    void GoToStart();
    // Scroll bars, the wheel, and a control that gets the focus out of sight; true when the message is used
    // up.
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    SIZE Content(HWND dialog);
    void Watch(HWND dialog, const SIZE& content);
    void SetExtents(const SIZE& content);
    void Reveal(HWND control);

    HWND m_dialog = nullptr; // once it has been too large
    SIZE m_margin{};         // behind the last controls, as it was then
    int m_marginDpi = 0;
    WindowScroll m_down{SB_VERT};
    WindowScroll m_across{SB_HORZ};
};
