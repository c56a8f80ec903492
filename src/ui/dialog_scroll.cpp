#include "ui/dialog_scroll.h"

#include <algorithm>

#include "ui/screen/scale.h"

namespace {

SIZE SizeOf(const RECT& rect)
{
    return {rect.right - rect.left, rect.bottom - rect.top};
}

SIZE ClientSize(HWND window)
{
    RECT client{};
    GetClientRect(window, &client);
    return SizeOf(client);
}

SIZE FrameSize(HWND window)
{
    RECT whole{};
    GetWindowRect(window, &whole);
    const SIZE inside = ClientSize(window);
    return {SizeOf(whole).cx - inside.cx, SizeOf(whole).cy - inside.cy};
}

// How far to the right and down the controls go.
SIZE ReachOfControls(HWND dialog)
{
    SIZE reach{};
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place{};
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        reach = {std::max(reach.cx, place.right), std::max(reach.cy, place.bottom)};
    }
    return reach;
}

// As near to its place as the area allows.
void PlaceWithin(const RECT& area, HWND window, LONG width, LONG height)
{
    RECT now{};
    GetWindowRect(window, &now);
    const LONG x = std::max(std::min(now.left, area.right - width), area.left);
    const LONG y = std::max(std::min(now.top, area.bottom - height), area.top);
    SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

// One whose edges can be dragged does so in whatever size it has.
bool LaysItselfOut(HWND dialog)
{
    return (GetWindowLongPtrW(dialog, GWL_STYLE) & WS_THICKFRAME) != 0;
}

} // namespace

bool DialogScroll::Fit(HWND dialog, const RECT& area)
{
    const SIZE content = Content(dialog), frame = FrameSize(dialog), room = SizeOf(area);
    const SIZE whole{content.cx + frame.cx, content.cy + frame.cy};
    const bool isTooWide = whole.cx > room.cx, isTooHigh = whole.cy > room.cy;
    if (!m_dialog && !isTooWide && !isTooHigh)
        return false;
    if (LaysItselfOut(dialog)) {
        PlaceWithin(area, dialog, std::min(whole.cx, room.cx), std::min(whole.cy, room.cy));
        return true;
    }
    Watch(dialog, content);
    PlaceWithin(area, dialog,
                std::min<LONG>(whole.cx + (isTooHigh ? MetricOf(dialog, SM_CXVSCROLL) : 0), room.cx),
                std::min<LONG>(whole.cy + (isTooWide ? MetricOf(dialog, SM_CYHSCROLL) : 0), room.cy));
    SetExtents(content);
    Reveal(GetFocus());
    return true;
}

// What the controls need, with no bar in the way.
SIZE DialogScroll::Content(HWND dialog)
{
    if (!m_dialog)
        return ClientSize(dialog);
    GoToStart();
    m_down.SetExtent(dialog, 0, 0);
    m_across.SetExtent(dialog, 0, 0);
    const SIZE reach = ReachOfControls(dialog);
    const int dpi = DpiOf(dialog);
    return {reach.cx + MulDiv(m_margin.cx, dpi, m_marginDpi),
            reach.cy + MulDiv(m_margin.cy, dpi, m_marginDpi)};
}

void DialogScroll::Watch(HWND dialog, const SIZE& content)
{
    if (m_dialog)
        return;
    m_dialog = dialog;
    const SIZE reach = ReachOfControls(dialog);
    m_margin = {content.cx - reach.cx, content.cy - reach.cy};
    m_marginDpi = DpiOf(dialog);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        TellFocus(child, dialog);
}

// The first bar to come takes room from the other direction.
void DialogScroll::SetExtents(const SIZE& content)
{
    for (int pass = 0; pass < 2; ++pass) {
        m_down.SetExtent(m_dialog, content.cy, ClientSize(m_dialog).cy);
        m_across.SetExtent(m_dialog, content.cx, ClientSize(m_dialog).cx);
    }
}

void DialogScroll::GoToStart()
{
    if (!m_dialog)
        return;
    m_down.OnScroll(m_dialog, SB_TOP);
    m_across.OnScroll(m_dialog, SB_LEFT);
}

// What is not shown does not scroll: once it is, the control that has the focus comes into sight.
void DialogScroll::Reveal(HWND control)
{
    if (!IsChild(m_dialog, control) || !IsWindowVisible(m_dialog))
        return;
    m_down.Reveal(m_dialog, control);
    m_across.Reveal(m_dialog, control);
}

bool DialogScroll::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_dialog)
        return false;
    switch (message) {
    case kMsgControlFocused: Reveal(reinterpret_cast<HWND>(lParam)); return true;
    case WM_MOUSEWHEEL:
        m_down.OnScroll(m_dialog, GET_WHEEL_DELTA_WPARAM(wParam) > 0 ? SB_LINEUP : SB_LINEDOWN);
        return true;
    case WM_VSCROLL: m_down.OnScroll(m_dialog, LOWORD(wParam)); return true;
    case WM_HSCROLL: m_across.OnScroll(m_dialog, LOWORD(wParam)); return true;
    case WM_WINDOWPOSCHANGED:
        if (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_SHOWWINDOW)
            Reveal(GetFocus());
        return false;
    default: return false;
    }
}
