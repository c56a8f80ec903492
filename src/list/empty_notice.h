// EmptyNotice: what an empty list says, centred below its header.
#pragma once

#include <windows.h>

#include "util/owners.h"

class EmptyNotice {
  public:
    // Shows the notice in the list, or takes it away.
    void Show(HWND list, bool empty);
    // Gives it the list's font.
    void SetFont(HWND list) const;
    // Fits it into the list's client area.
    void Fit(HWND list);
    void Hide() { m_window.reset(); }
    // The list, and the notice with it, has been destroyed.
    void Forget() { (void)m_window.release(); }

    // The list's WM_CTLCOLORSTATIC: the colours of the list.
    static HBRUSH Colors(HDC dc);

  private:
    UniqueWindow m_window;
};
