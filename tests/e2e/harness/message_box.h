// Message boxes of another process.
#pragma once

#include <windows.h>

#include <string>

#include "e2e/harness/wait.h"

class RemoteMessageBox {
  public:
    explicit RemoteMessageBox(HWND window) : m_window(window) {}

    explicit operator bool() const { return m_window != nullptr; }
    HWND Handle() const { return m_window; }
    std::wstring Text() const;
    std::wstring Caption() const;
    // Whether there is a button for this answer (IDOK, IDYES, ...), and whether it is the default one.
    bool Offers(int answer) const;
    bool IsDefault(int answer) const;
    // Presses the button and waits until the box is gone and the keyboard is back with a window of the
    // process.
    [[nodiscard]] bool Answer(int answer) const;

  private:
    HWND m_window;
};

bool IsMessageBox(HWND window);
// The process's message box; an empty one when none comes within the limit.
[[nodiscard]] RemoteMessageBox WaitForMessageBox(DWORD process, DWORD limit = kRemoteLimit);
// Whether the process shows a message box at this moment.
bool HasMessageBox(DWORD process);
