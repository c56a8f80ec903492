// The hourglass while something is waited for that nobody has asked for, and the pointer before it again.
#pragma once

#include <windows.h>

class WaitCursor {
  public:
    WaitCursor() : m_before(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(m_before); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

  private:
    HCURSOR m_before;
};
