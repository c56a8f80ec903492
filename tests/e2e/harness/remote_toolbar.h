// A tool bar of another process. Buttons are named by their commands.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "e2e/harness/remote_memory.h"

class RemoteToolbar {
  public:
    explicit RemoteToolbar(HWND bar);

    HWND Handle() const { return m_bar; }
    // The commands from left to right; separators too.
    std::vector<int> Commands() const;
    TBBUTTON Button(int index) const;
    std::wstring Text(int command) const;
    bool IsEnabled(int command) const;
    bool IsChecked(int command) const;
    // On the screen: the button, the middle of its body, and its drop-down arrow.
    RECT ScreenRect(int command) const;
    POINT BodyPoint(int command) const;
    POINT ArrowPoint(int command) const;

  private:
    HWND m_bar;
    UniqueKernelHandle m_process;
};
