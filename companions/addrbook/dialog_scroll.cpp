#include "addrbook/dialog_scroll.h"

#include <algorithm>

#include "ui/scale.h"
#include "ui/work_area.h"

namespace addrbook {

namespace {

constexpr int kStep = 16;

SCROLLINFO BarOf(HWND window, int bar)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window, bar, &info);
    return info;
}

// How far to go from where the control lies to where all of it, or its start, is seen.
int StepToSee(LONG start, LONG end, LONG room)
{
    if (start < 0)
        return static_cast<int>(start);
    return end > room ? static_cast<int>(std::min(start, end - room)) : 0;
}

bool IsFocusNotice(WORD code, HWND control)
{
    return control && (code == EN_SETFOCUS || code == BN_SETFOCUS);
}

} // namespace

void DialogScroll::Fit(HWND dialog)
{
    m_dialog = dialog;
    RECT window{}, client{};
    GetWindowRect(dialog, &window);
    GetClientRect(dialog, &client);
    const RECT area = WorkArea();
    const LONG width = window.right - window.left, height = window.bottom - window.top;
    const LONG roomX = area.right - area.left, roomY = area.bottom - area.top;
    const LONG newWidth = std::min(height > roomY ? width + GetSystemMetrics(SM_CXVSCROLL) : width, roomX);
    const LONG newHeight = std::min(width > roomX ? height + GetSystemMetrics(SM_CYHSCROLL) : height, roomY);
    SetWindowPos(dialog, nullptr, area.left + (roomX - newWidth) / 2, area.top + (roomY - newHeight) / 2,
                 newWidth, newHeight, SWP_NOZORDER | SWP_NOACTIVATE);
    if (height <= roomY && width <= roomX)
        return;
    // The first bar to come takes room from the other direction.
    for (int pass = 0; pass < 2; ++pass) {
        RECT shown{};
        GetClientRect(dialog, &shown);
        SetBar(SB_VERT, client.bottom, shown.bottom);
        GetClientRect(dialog, &shown);
        SetBar(SB_HORZ, client.right, shown.right);
    }
}

void DialogScroll::SetBar(int bar, LONG whole, LONG page) const
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = static_cast<int>(whole) - 1;
    info.nPage = static_cast<UINT>(page);
    SetScrollInfo(m_dialog, bar, &info, TRUE);
}

void DialogScroll::Scroll(int bar, int to)
{
    const int before = BarOf(m_dialog, bar).nPos;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_POS;
    info.nPos = to;
    const int moved = before - SetScrollInfo(m_dialog, bar, &info, TRUE);
    if (moved)
        ScrollWindowEx(m_dialog, bar == SB_HORZ ? moved : 0, bar == SB_VERT ? moved : 0, nullptr, nullptr,
                       nullptr, nullptr, SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
}

void DialogScroll::OnBar(int bar, WORD request)
{
    const SCROLLINFO info = BarOf(m_dialog, bar);
    const int page = static_cast<int>(info.nPage);
    switch (request) {
    case SB_LINEUP: return Scroll(bar, info.nPos - Scale(kStep));
    case SB_LINEDOWN: return Scroll(bar, info.nPos + Scale(kStep));
    case SB_PAGEUP: return Scroll(bar, info.nPos - page);
    case SB_PAGEDOWN: return Scroll(bar, info.nPos + page);
    case SB_TOP: return Scroll(bar, info.nMin);
    case SB_BOTTOM: return Scroll(bar, info.nMax);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: return Scroll(bar, info.nTrackPos);
    default: return;
    }
}

void DialogScroll::Reveal(HWND control)
{
    RECT place{}, client{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&place), 2);
    GetClientRect(m_dialog, &client);
    if (const int step = StepToSee(place.top, place.bottom, client.bottom))
        Scroll(SB_VERT, BarOf(m_dialog, SB_VERT).nPos + step);
    if (const int step = StepToSee(place.left, place.right, client.right))
        Scroll(SB_HORZ, BarOf(m_dialog, SB_HORZ).nPos + step);
}

bool DialogScroll::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_dialog)
        return false;
    if (message == WM_COMMAND && IsFocusNotice(HIWORD(wParam), reinterpret_cast<HWND>(lParam)))
        Reveal(reinterpret_cast<HWND>(lParam));
    if (message == WM_MOUSEWHEEL)
        OnBar(SB_VERT, GET_WHEEL_DELTA_WPARAM(wParam) > 0 ? SB_LINEUP : SB_LINEDOWN);
    else if (message == WM_VSCROLL || message == WM_HSCROLL)
        OnBar(message == WM_VSCROLL ? SB_VERT : SB_HORZ, LOWORD(wParam));
    else
        return false;
    return true;
}

} // namespace addrbook
