// MenuBar: a tool bar that works as the menu bar of its top-level window, with the mouse and from the
// keyboard.
#pragma once

#include <windows.h>

#include <memory>

#include "ui/bars/menu_bar_buttons.h"
#include "ui/bars/menu_tracker.h"
#include "ui/window_hook.h"
#include "util/owners.h"

class MenuBar {
  public:
    // Puts the menu's top-level items into the bar, whose parent is the rebar and whose grandparent is the
    // window that owns the menus. Null on failure.
    static std::unique_ptr<MenuBar> Create(HWND bar, HINSTANCE instance, int menuId);
    ~MenuBar();
    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;

    HMENU Handle() const { return m_menu.get(); }

    // A message of the bar's window; true when it is answered with *result.
    bool OnBarMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // The bar's TBN_DROPDOWN for one of its buttons.
    void OnDropDown(int command);
    // A message of the thread's queue before anything else sees it; true when it is used up.
    bool TranslateKey(const MSG& message);

  private:
    // Active: the bar has the keyboard and one item is hot, but no menu is open.
    enum class Mode { Idle, Active, Open };

    MenuBar(HWND bar, HWND owner, UniqueMenu menu);
    static LRESULT HandleOwnerMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam);
    bool OnOwnerMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnKeyMenu(wchar_t character);
    bool OnMnemonic(wchar_t character);
    void OnOwnerDeactivated();
    bool OnKeyDown(WPARAM key);
    bool OnChar(wchar_t character);
    bool IsMouseResting() const;

    void Activate(int index);
    void Leave();
    void Release();
    void PostOpen(int index, bool byKeyboard);
    void Open(int index, bool byKeyboard);
    void ShowUnderlines() const;

    MenuBarButtons m_buttons;
    HWND m_owner;
    WindowHook m_ownerHook;
    SharedMenu m_menu;
    UniqueFont m_font;
    Mode m_mode = Mode::Idle;
    HWND m_focusBefore = nullptr;
    POINT m_mouseBefore{};
};
