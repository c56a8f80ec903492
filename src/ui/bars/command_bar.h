// CommandBar: one band's bar of buttons, a tool bar that tells its band how much room its buttons need.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <memory>

#include "ui/bars/menu_bar.h"
#include "ui/window_hook.h"
#include "util/owners.h"

class CommandBar {
  public:
    // A bar without buttons, a child of the rebar. onResized is called when its buttons may need other room.
    // Null on failure.
    static std::unique_ptr<CommandBar> Create(HINSTANCE instance, HWND rebar,
                                              std::function<void()> onResized);
    // The object of a bar's window; null for a bar of another kind.
    static CommandBar* Of(HWND bar);
    ~CommandBar();

    HWND Window() const { return m_window; }

    // Lays the buttons out in rows of at most this width; returns the room that they need.
    SIZE Fit(int available);

    bool InsertMenubar(HINSTANCE instance, int menuId);
    MenuBar* Menu() const { return m_menu.get(); }
    // The index of the first image added, -1 on failure.
    int AddBitmap(HINSTANCE instance, int bitmapId, int imageCount);

  private:
    explicit CommandBar(std::function<void()> onResized) : m_onResized(std::move(onResized)) {}
    static LRESULT HandleMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void BreakAfter(int index, bool isRowEnd);
    SIZE ButtonsSize() const;

    HWND m_window = nullptr;
    WindowHook m_hook;
    std::function<void()> m_onResized;
    UniqueFont m_font; // where it has one of its own
    UniqueImageList m_images;
    UniqueImageList m_greyedImages;
    std::unique_ptr<MenuBar> m_menu;
    bool m_fitting = false;
};
