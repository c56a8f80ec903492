// MainWindow: the command bands at the top and the entry list below them.
#pragma once

#include <windows.h>

class MainWindow {
  public:
    HWND Handle() const { return m_window; }

  private:
    HWND m_window = nullptr;
};
