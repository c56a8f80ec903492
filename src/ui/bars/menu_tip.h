// MenuTip: a tip beside the highlighted item of an open menu, for commands that have one: a string of the
// program under the command's own identifier.
#pragma once

#include <windows.h>

#include "util/owners.h"

class MenuTip {
  public:
    // For WM_MENUSELECT of the window that owns the menu; the tip goes with that window. The tip stands right
    // of the item, or left of it where the screen ends, in the font of the window's resolution.
    void OnMenuSelect(HWND owner, WPARAM wParam, LPARAM lParam);

  private:
    bool Show(HWND owner, HMENU menu, UINT command);
    bool Make(HWND owner);
    void FitFont(HWND owner);

    HWND m_tip = nullptr; // made when it is first needed
    int m_dpi = 0;        // that the font is for
    UniqueFont m_font;
};
