#include "addrbook/dialog_scroll.h"

#include <algorithm>

#include "ui/scale.h"
#include "ui/work_area.h"

namespace addrbook {

namespace {

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
    HWND owner = GetWindow(dialog, GW_OWNER);
    const RECT area = WorkAreaAt(owner ? owner : dialog);
    const LONG width = window.right - window.left, height = window.bottom - window.top;
    const LONG roomX = area.right - area.left, roomY = area.bottom - area.top;
    const LONG newWidth = std::min(height > roomY ? width + MetricOf(dialog, SM_CXVSCROLL) : width, roomX);
    const LONG newHeight = std::min(width > roomX ? height + MetricOf(dialog, SM_CYHSCROLL) : height, roomY);
    SetWindowPos(dialog, nullptr, area.left + (roomX - newWidth) / 2, area.top + (roomY - newHeight) / 2,
                 newWidth, newHeight, SWP_NOZORDER | SWP_NOACTIVATE);
    if (height <= roomY && width <= roomX)
        return;
    // The first bar to come takes room from the other direction.
    for (int pass = 0; pass < 2; ++pass) {
        RECT shown{};
        GetClientRect(dialog, &shown);
        m_down.SetExtent(dialog, client.bottom, shown.bottom);
        GetClientRect(dialog, &shown);
        m_across.SetExtent(dialog, client.right, shown.right);
    }
}

void DialogScroll::Reveal(HWND control)
{
    m_down.Reveal(m_dialog, control);
    m_across.Reveal(m_dialog, control);
}

bool DialogScroll::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_dialog)
        return false;
    if (message == WM_COMMAND && IsFocusNotice(HIWORD(wParam), reinterpret_cast<HWND>(lParam)))
        Reveal(reinterpret_cast<HWND>(lParam));
    switch (message) {
    case WM_MOUSEWHEEL:
        m_down.OnScroll(m_dialog, GET_WHEEL_DELTA_WPARAM(wParam) > 0 ? SB_LINEUP : SB_LINEDOWN);
        return true;
    case WM_VSCROLL: m_down.OnScroll(m_dialog, LOWORD(wParam)); return true;
    case WM_HSCROLL: m_across.OnScroll(m_dialog, LOWORD(wParam)); return true;
    default: return false;
    }
}

} // namespace addrbook
