// The menu bar, worked with real keys and the real mouse.
#pragma once

#include <gtest/gtest.h>

#include "ui/bands_window.h"
#include "ui/bars/menu_bar.h"
#include "ui/input.h"
#include "ui/ui_test_resource.h"

constexpr int kFile = 0;
constexpr int kEdit = 1;
constexpr int kGreyMenu = 2;
constexpr int kGo = 3;
constexpr WORD kAlt = VK_MENU;

class MenuBarTest : public testing::Test {
  protected:
    MenuBarTest()
    {
        m_window.onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
            return OnMessage(message, wParam, lParam, result);
        };
        m_window.Show();
        // Out of the way of the menus.
        InputScript().MoveTo([this] { return CenterOf(m_window.Focus(), {0, 0, 200, 100}); }).Run();
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
    {
        if (message == WM_INITMENUPOPUP)
            m_initialized.push_back(reinterpret_cast<HMENU>(wParam));
        if (message == WM_COMMAND && lParam == 0) {
            EXPECT_TRUE(OpenMenus().empty());
            EXPECT_EQ(GetFocus(), m_window.Focus());
        }
        if (message == WM_SYSCOMMAND)
            m_systemCommands.push_back({wParam & 0xFFF0, lParam});
        return m_onMessage && m_onMessage(message, wParam, lParam, result);
    }

    // Runs the steps in a loop like the program's.
    void Play(const InputScript& steps)
    {
        InputScript script = steps;
        script.Run([this](const MSG& message) {
            return CommandBands_TranslateMenuKey(m_window.MenuBar(), message);
        });
    }

    // Another window, not yet on the screen: it becomes the active one when it is shown.
    static UniqueWindow MakeOther()
    {
        return UniqueWindow(CreateWindowExW(0, L"STATIC", L"Other", WS_OVERLAPPEDWINDOW, 300, 300, 200, 100,
                                            nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
    }

    int Hot() const { return static_cast<int>(SendMessageW(m_window.MenuBar(), TB_GETHOTITEM, 0, 0)); }
    bool IsActive() const { return GetFocus() == m_window.MenuBar(); }
    bool IsLeft() const { return GetFocus() == m_window.Focus() && Hot() < 0 && OpenMenus().empty(); }
    HMENU Menu(int index) const { return GetSubMenu(CommandBar_GetMenu(m_window.MenuBar()), index); }
    HMENU Inner() const { return GetSubMenu(Menu(kEdit), 0); }
    bool IsOpen(HMENU menu) const { return InnermostMenu() == menu; }

    std::function<bool()> Hot(int index)
    {
        return [this, index] { return IsActive() && Hot() == index && OpenMenus().empty(); };
    }
    // A menu is open with an item selected; -1: none selected.
    std::function<bool()> Open(int index, int item) { return OpenMenu(Menu(index), item); }
    std::function<bool()> OpenMenu(HMENU menu, int item)
    {
        return [this, menu, item] { return IsOpen(menu) && SelectedItem(menu) == item; };
    }
    std::function<bool()> Left()
    {
        return [this] { return IsLeft(); };
    }
    // Left, but the mouse may make a button hot.
    std::function<bool()> Closed()
    {
        return [this] { return GetFocus() == m_window.Focus() && OpenMenus().empty(); };
    }
    std::function<bool()> Commanded()
    {
        return [this] { return !m_window.commands.empty(); };
    }
    std::function<POINT()> Button(int index)
    {
        return [this, index] {
            return CenterOf(m_window.MenuBar(), ButtonRects(m_window.MenuBar())[static_cast<size_t>(index)]);
        };
    }
    static std::function<POINT()> Item(HMENU menu, UINT index)
    {
        return [menu, index] {
            RECT rect{};
            GetMenuItemRect(nullptr, menu, index, &rect);
            return POINT{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
        };
    }
    std::function<POINT()> Outside()
    {
        return [this] { return CenterOf(m_window.Focus(), {0, 0, 200, 100}); };
    }
    static std::function<void()> Key(WORD key)
    {
        return [key] { PressKey(key); };
    }
    static std::function<void()> AltAnd(WORD key)
    {
        return [key] { PressWith(kAlt, key); };
    }

    std::vector<UINT> m_noCommands;
    std::vector<HMENU> m_initialized;
    std::vector<std::pair<WPARAM, LPARAM>> m_systemCommands;
    std::function<bool(UINT, WPARAM, LPARAM, LRESULT*)> m_onMessage;
    BandsWindow m_window{640};
};
