#include "ui/bars/menu_tip.h"

#include <commctrl.h>

#include <utility>

#include "ui/screen/message_font.h"
#include "ui/screen/scale.h"

namespace {

constexpr int kTextSize = 80;
constexpr UINT_PTR kTool = 1;
constexpr int kGap = 4; // pixels: the menu's frame

TOOLINFOW ToolOf(HWND owner)
{
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = owner;
    tool.uId = kTool;
    return tool;
}

// Of an open menu; false when it has no such item.
bool FindItem(HMENU menu, UINT command, RECT* place)
{
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        if (GetMenuItemID(menu, i) == command)
            return GetMenuItemRect(nullptr, menu, static_cast<UINT>(i), place) != FALSE;
    return false;
}

void MoveTo(HWND tip, LONG x, LONG y)
{
    SendMessageW(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(x, y));
}

// Where the screen ends some systems move a tip over the menu, and others show a part of it.
bool IsWholeBeside(const RECT& tip, const RECT& item)
{
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromRect(&item, MONITOR_DEFAULTTONEAREST), &screen);
    return tip.left >= item.right && tip.right <= screen.rcWork.right;
}

} // namespace

void MenuTip::OnMenuSelect(HWND owner, WPARAM wParam, LPARAM lParam)
{
    auto* menu = reinterpret_cast<HMENU>(lParam);
    const bool isItem = menu && !(HIWORD(wParam) & (MF_POPUP | MF_SEPARATOR | MF_SYSMENU));
    if (isItem && Show(owner, menu, LOWORD(wParam)))
        return;
    if (m_tip) {
        TOOLINFOW tool = ToolOf(owner);
        SendMessageW(m_tip, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
    }
}

bool MenuTip::Show(HWND owner, HMENU menu, UINT command)
{
    wchar_t text[kTextSize];
    RECT item{};
    if (!LoadStringW(GetModuleHandleW(nullptr), command, text, kTextSize) ||
        !FindItem(menu, command, &item) || !Make(owner))
        return false;
    FitFont(owner);
    TOOLINFOW tool = ToolOf(owner);
    tool.lpszText = text;
    SendMessageW(m_tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    const int gap = Scale(owner, kGap);
    MoveTo(m_tip, item.right + gap, item.top);
    SendMessageW(m_tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
    RECT place{};
    GetWindowRect(m_tip, &place); // its size is known from here on
    if (!IsWholeBeside(place, item))
        MoveTo(m_tip, item.left - gap - (place.right - place.left), item.top);
    return true;
}

bool MenuTip::Make(HWND owner)
{
    if (m_tip)
        return true;
    m_tip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
    TOOLINFOW tool = ToolOf(owner);
    SendMessageW(m_tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    return m_tip != nullptr;
}

// The window is on another monitor than when the tip was shown last.
void MenuTip::FitFont(HWND owner)
{
    const int dpi = DpiOf(owner);
    if (std::exchange(m_dpi, dpi) == dpi)
        return;
    if (UniqueFont font = MakeTipFont(owner)) {
        SendMessageW(m_tip, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
        m_font = std::move(font);
    }
}
