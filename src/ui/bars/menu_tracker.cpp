#include "ui/bars/menu_tracker.h"

#include <utility>

#include "ui/bars/drop_down.h"
#include "ui/bars/menu_keys.h"

namespace {

// The hook's procedure gets no other way to the menus it works for.
MenuTracker* s_tracking = nullptr;

int HighlightedItem(HMENU menu)
{
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        if (state != static_cast<UINT>(-1) && state & MF_HILITE)
            return i;
    }
    return -1;
}

// The menu that the highlighted item of a menu opens: there the right arrow leads, not to the next menu.
HMENU HighlightedSubmenu(HMENU menu)
{
    const int item = HighlightedItem(menu);
    if (item < 0 || GetMenuState(menu, static_cast<UINT>(item), MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED))
        return nullptr;
    return GetSubMenu(menu, item);
}

// The innermost menu with a highlighted item.
HMENU CurrentMenu(HMENU menu)
{
    for (HMENU inner = HighlightedSubmenu(menu); inner && HighlightedItem(inner) >= 0;
         inner = HighlightedSubmenu(menu))
        menu = inner;
    return menu;
}

} // namespace

MenuTracker::MenuTracker(MenuBarButtons bar, SharedMenu menu, HWND owner)
    : m_bar(bar), m_menu(std::move(menu)), m_owner(owner)
{}

bool MenuTracker::Run(int index, bool byKeyboard)
{
    MenuTracker* outer = std::exchange(s_tracking, this);
    HHOOK hook = SetWindowsHookExW(WH_MSGFILTER, Hook, nullptr, GetCurrentThreadId());
    m_next = Next{index, byKeyboard};
    while (m_next && IsWindow(m_bar.Window()))
        Show(*std::exchange(m_next, std::nullopt));
    if (hook)
        UnhookWindowsHookEx(hook);
    s_tracking = outer;
    return IsWindow(m_bar.Window()) != FALSE;
}

void MenuTracker::Show(Next next)
{
    m_index = next.index;
    m_escaped = false;
    GetCursorPos(&m_mouse);
    HMENU popup = GetSubMenu(m_menu.get(), m_index);
    if (!popup) {
        m_command = GetMenuItemID(m_menu.get(), m_index);
        return;
    }
    m_bar.SetHot(m_index);
    m_bar.Press(m_index, true);
    // Taken by the menu's loop, which begins without a selected item.
    if (next.byKeyboard)
        PostMessageW(m_owner, WM_KEYDOWN, VK_DOWN, 1);
    m_command = TrackDropDown(m_bar.Window(), MenuBarButtons::CommandOf(m_index), popup, m_owner);
    m_bar.Press(m_index, false);
}

LRESULT CALLBACK MenuTracker::Hook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == MSGF_MENU && s_tracking && s_tracking->OnMenuMessage(*reinterpret_cast<MSG*>(lParam)))
        return 1;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool MenuTracker::OnMenuMessage(const MSG& message)
{
    switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: return OnKey(message.wParam);
    case WM_MOUSEMOVE: return OnMouseMove(message.pt);
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: return OnClick(message.pt);
    default: return false;
    }
}

bool MenuTracker::OnKey(WPARAM key)
{
    m_escaped = key == VK_ESCAPE;
    HMENU popup = GetSubMenu(m_menu.get(), m_index);
    HMENU current = CurrentMenu(popup);
    if (key == VK_LEFT && current == popup)
        return GoTo(NextItem(m_bar.Enabled(), m_index, -1), true);
    if (key == VK_RIGHT && !HighlightedSubmenu(current))
        return GoTo(NextItem(m_bar.Enabled(), m_index, 1), true);
    return false;
}

// A menu that opens under a resting mouse sends moves too.
bool MenuTracker::OnMouseMove(POINT point)
{
    if (point.x == m_mouse.x && point.y == m_mouse.y)
        return false;
    m_mouse = point;
    const int index = m_bar.At(point);
    if (index < 0 || index == m_index || !m_bar.IsEnabled(index))
        return false;
    return GoTo(index, false);
}

// A click on the open menu's own button closes it.
bool MenuTracker::OnClick(POINT point)
{
    m_escaped = false;
    const int index = m_bar.At(point);
    if (index < 0)
        return false;
    if (index != m_index && m_bar.IsEnabled(index))
        return GoTo(index, false);
    EndMenu();
    return true;
}

bool MenuTracker::GoTo(int index, bool byKeyboard)
{
    if (index < 0)
        return false;
    m_next = Next{index, byKeyboard};
    EndMenu();
    return true;
}
