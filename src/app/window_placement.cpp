#include "app/window_placement.h"

#include "ui/work_area.h"

namespace {

// Stored as the two's complement of the pixel: a window may start left of or above the main screen.
constexpr const wchar_t* kLeft = L"wLeft";
constexpr const wchar_t* kTop = L"wTop";
constexpr const wchar_t* kRight = L"wRight";
constexpr const wchar_t* kBottom = L"wBottom";
constexpr const wchar_t* kMaximized = L"wMax";

constexpr LONG kFarthest = 32767; // beyond every desktop
constexpr LONG kGrip = 32;        // at least so much of the window must lie on a screen to be worked with

LONG LoadEdge(const RegistryStore& settings, const wchar_t* name)
{
    return static_cast<LONG>(settings.GetNumber(kSettings, name, 0));
}

RECT LoadPlace(const RegistryStore& settings)
{
    return {LoadEdge(settings, kLeft), LoadEdge(settings, kTop), LoadEdge(settings, kRight),
            LoadEdge(settings, kBottom)};
}

bool IsInside(LONG value)
{
    return value >= -kFarthest && value <= kFarthest;
}

// A title bar that cannot be reached with the mouse makes a stored place useless.
bool IsReachable(const RECT& place)
{
    if (!IsInside(place.left) || !IsInside(place.top) || !IsInside(place.right) || !IsInside(place.bottom))
        return false;
    if (place.right - place.left < kGrip || place.bottom - place.top < kGrip)
        return false;
    const RECT title{place.left, place.top, place.right, place.top + kGrip};
    HMONITOR monitor = MonitorFromRect(&title, MONITOR_DEFAULTTONULL);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    RECT common;
    return monitor && GetMonitorInfoW(monitor, &info) && IntersectRect(&common, &title, &info.rcWork) &&
           common.right - common.left >= kGrip && common.bottom - common.top >= kGrip / 2;
}

bool IsOpenCommand(int showCommand)
{
    return showCommand == SW_SHOWNORMAL || showCommand == SW_SHOW || showCommand == SW_SHOWDEFAULT ||
           showCommand == SW_RESTORE;
}

void MoveTo(HWND window, const RECT& place)
{
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

void AddDesktopFrame(HWND window)
{
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    SetWindowLongPtrW(window, GWL_STYLE, style | WS_OVERLAPPEDWINDOW);
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT PlaceToOpenAt(const RegistryStore& settings)
{
    const RECT stored = LoadPlace(settings);
    return IsReachable(stored) ? stored : WorkArea();
}

void ShowPlaced(HWND window, int showCommand, const RegistryStore& settings)
{
    MoveTo(window, PlaceToOpenAt(settings));
    const bool maximized =
        IsReachable(LoadPlace(settings)) && settings.GetNumber(kSettings, kMaximized, 0) != 0;
    ShowWindow(window, maximized && IsOpenCommand(showCommand) ? SW_SHOWMAXIMIZED : showCommand);
}

void SavePlacement(HWND window, RegistryStore& settings)
{
    RECT place;
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(window, &placement) || !GetWindowRect(window, &place))
        return;
    const bool maximized =
        placement.showCmd == SW_SHOWMAXIMIZED ||
        (placement.showCmd == SW_SHOWMINIMIZED && (placement.flags & WPF_RESTORETOMAXIMIZED));
    if (placement.showCmd != SW_SHOWNORMAL) {
        // The restored place is told in coordinates that start at the work area's corner.
        const RECT area = WorkArea();
        place = placement.rcNormalPosition;
        OffsetRect(&place, area.left, area.top);
    }
    settings.SetNumber(kSettings, kLeft, static_cast<DWORD>(place.left));
    settings.SetNumber(kSettings, kTop, static_cast<DWORD>(place.top));
    settings.SetNumber(kSettings, kRight, static_cast<DWORD>(place.right));
    settings.SetNumber(kSettings, kBottom, static_cast<DWORD>(place.bottom));
    settings.SetNumber(kSettings, kMaximized, maximized ? 1 : 0);
}
