// Keeps a dialog within the work area: what has no room is scrolled to.
#pragma once

#include <windows.h>

#include "ui/window_scroll.h"

namespace addrbook {

class DialogScroll {
  public:
    // Makes the dialog, which has its full size, no larger than the work area, in whose middle it goes.
    void Fit(HWND dialog);
    // Scroll bars, the wheel, and a control that gets the focus out of sight; true when the message is used
    // up.
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    void Reveal(HWND control);

    HWND m_dialog = nullptr;
    WindowScroll m_down{SB_VERT};
    WindowScroll m_across{SB_HORZ};
};

} // namespace addrbook
