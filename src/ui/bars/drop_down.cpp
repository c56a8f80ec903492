#include "ui/bars/drop_down.h"

#include <commctrl.h>

#include <algorithm>

#include "ui/taken_message.h"

namespace {

RECT ButtonOnScreen(HWND bar, int command)
{
    RECT rect{};
    SendMessageW(bar, TB_GETRECT, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&rect));
    MapWindowPoints(bar, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

// A click outside closes the menu and stays in the queue. Not looked for by the bar's window: which window
// gets it may be settled only when it is taken.
void TakeClickOn(const RECT& button)
{
    for (const UINT kind : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONDBLCLK}}) {
        MSG message;
        if (PeekMessageW(&message, nullptr, kind, kind, PM_NOREMOVE) && message.message == kind &&
            PtInRect(&button, message.pt))
            (void)TakeMessage(nullptr, kind, &message);
    }
}

} // namespace

POINT PointWithin(POINT wanted, const RECT& area)
{
    return {std::clamp(wanted.x, area.left, std::max(area.left, area.right - 1)),
            std::clamp(wanted.y, area.top, std::max(area.top, area.bottom - 1))};
}

POINT MenuCorner(POINT wanted, const RECT& place)
{
    MONITORINFO info{};
    info.cbSize = sizeof info;
    HMONITOR monitor = MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST);
    return GetMonitorInfoW(monitor, &info) ? PointWithin(wanted, info.rcMonitor) : wanted;
}

// Wine's loop removes each message behind its work, by its kind. Where that one has gone with its window
// meanwhile, the quit message is removed instead, whatever the kind.
UINT TrackMenu(HMENU menu, UINT flags, POINT corner, HWND owner, TPMPARAMS* exclude)
{
    const BOOL chosen = TrackPopupMenuEx(menu, flags, corner.x, corner.y, owner, exclude);
    if (!IsWindow(owner))
        PostQuitMessage(0);
    return static_cast<UINT>(chosen);
}

UINT TrackDropDown(HWND bar, int command, HMENU menu, HWND owner)
{
    const RECT button = ButtonOnScreen(bar, command);
    TPMPARAMS exclude{sizeof exclude, button};
    const POINT corner = MenuCorner({button.left, button.bottom}, button);
    const UINT chosen =
        TrackMenu(menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL | TPM_LEFTBUTTON | TPM_RETURNCMD, corner,
                  owner, &exclude);
    TakeClickOn(button);
    return chosen;
}

UINT TrackPressedDropDown(HWND bar, int command, HMENU menu, HWND owner)
{
    SendMessageW(bar, TB_PRESSBUTTON, static_cast<WPARAM>(command), TRUE);
    const UINT chosen = TrackDropDown(bar, command, menu, owner);
    SendMessageW(bar, TB_PRESSBUTTON, static_cast<WPARAM>(command), FALSE);
    return chosen;
}
