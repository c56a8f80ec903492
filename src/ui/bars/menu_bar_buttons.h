// The buttons of a menu bar: one for each top-level item of the menu, in the same order.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

class MenuBarButtons {
  public:
    explicit MenuBarButtons(HWND bar) : m_bar(bar) {}

    HWND Window() const { return m_bar; }
    // Adds a button for each item, with the item's text. False on failure.
    bool Add(HMENU menu);

    static int CommandOf(int index);
    static int IndexOf(int command);
    std::vector<bool> Enabled() const;
    bool IsEnabled(int index) const;
    // The button at a point of the screen, -1 for none.
    int At(POINT point) const;
    // The button that is highlighted, -1 for none.
    int Hot() const;
    void SetHot(int index) const;
    void Press(int index, bool pressed) const;

  private:
    HWND m_bar;
};

// The texts of a menu's own items.
std::vector<std::wstring> ItemTexts(HMENU menu);
