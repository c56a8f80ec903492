// MenuTracker: the menus of a menu bar while they are open, from the first one to the end, with the ways from
// one to the next: the mouse over another button, the left and right arrows.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <type_traits>

#include "ui/bars/menu_bar_buttons.h"

// A menu that stays until all who use it are done: a window may be destroyed while its menu is open.
using SharedMenu = std::shared_ptr<std::remove_pointer_t<HMENU>>;

class MenuTracker {
  public:
    MenuTracker(MenuBarButtons bar, SharedMenu menu, HWND owner);
    MenuTracker(const MenuTracker&) = delete;
    MenuTracker& operator=(const MenuTracker&) = delete;

    // Opens the menu at an index and waits until the last menu is closed. False when the bar is gone by then.
    bool Run(int index, bool byKeyboard);

    // What was chosen; 0 for nothing.
    UINT Command() const { return m_command; }
    // The menu that was open last.
    int Index() const { return m_index; }
    // Whether the last menu was closed with Esc.
    bool IsEscaped() const { return m_escaped; }

  private:
    struct Next {
        int index;
        bool byKeyboard;
    };

    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam);
    void Show(Next next);
    // Whether the message is used up.
    bool OnMenuMessage(const MSG& message);
    bool OnKey(WPARAM key);
    bool OnMouseMove(POINT point);
    bool OnClick(POINT point);
    bool GoTo(int index, bool byKeyboard);

    MenuBarButtons m_bar;
    SharedMenu m_menu;
    HWND m_owner;
    std::optional<Next> m_next;
    UINT m_command = 0;
    int m_index = -1;
    bool m_escaped = false;
    POINT m_mouse{};
};
