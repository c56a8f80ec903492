#include "settings/window_placement.h"

#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "ui/wine.h"

namespace {

// Stored as the two's complement of the pixel: a window may start left of or above the main screen.
constexpr const wchar_t* kLeft = L"wLeft";
constexpr const wchar_t* kTop = L"wTop";
constexpr const wchar_t* kRight = L"wRight";
constexpr const wchar_t* kBottom = L"wBottom";
constexpr const wchar_t* kMaximized = L"wMax";

constexpr LONG kFarthest = 32767; // beyond every desktop
constexpr int kGrip = 32;         // at least so much of the window must lie on a screen to be worked with

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

// The work area of the screen that shows a place's title bar; nothing when none does: without a title bar
// that the mouse can get hold of a stored place is useless.
std::optional<RECT> ScreenOf(const RECT& place)
{
    const LONG grip = Scale(kGrip);
    if (!IsInside(place.left) || !IsInside(place.top) || !IsInside(place.right) || !IsInside(place.bottom))
        return std::nullopt;
    if (place.right - place.left < grip || place.bottom - place.top < grip)
        return std::nullopt;
    const RECT title{place.left, place.top, place.right, place.top + grip};
    HMONITOR monitor = MonitorFromRect(&title, MONITOR_DEFAULTTONULL);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    RECT common;
    if (!monitor || !GetMonitorInfoW(monitor, &info) || !IntersectRect(&common, &title, &info.rcWork) ||
        common.right - common.left < grip || common.bottom - common.top < grip / 2)
        return std::nullopt;
    return info.rcWork;
}

// The screen may have been larger when the place was stored.
RECT Fitted(RECT place, const RECT& screen)
{
    const RECT area = PlaceToFill(screen, ClearFrame(nullptr));
    if (place.right - place.left > area.right - area.left) {
        place.left = area.left;
        place.right = area.right;
    }
    if (place.bottom - place.top > area.bottom - area.top) {
        place.top = area.top;
        place.bottom = area.bottom;
    }
    return place;
}

// A restored place is told in coordinates that start at the work area's corner of the screen that it is on.
SIZE WorkspaceOffset(const RECT& place)
{
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (!GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTOPRIMARY), &info))
        return {};
    return {info.rcWork.left - info.rcMonitor.left, info.rcWork.top - info.rcMonitor.top};
}

void Move(HWND window, const RECT& place, UINT flags = 0)
{
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 flags | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool IsOpenCommand(int showCommand)
{
    return showCommand == SW_SHOWNORMAL || showCommand == SW_SHOW || showCommand == SW_SHOWDEFAULT ||
           showCommand == SW_RESTORE;
}

} // namespace

LONG ClearFrame(HWND window)
{
    if (IsUnderWine())
        return 0;
    return MetricOf(window, SM_CXSIZEFRAME) + MetricOf(window, SM_CXPADDEDBORDER) -
           MetricOf(window, SM_CXBORDER);
}

RECT PlaceToFill(const RECT& area, LONG clearFrame)
{
    return {area.left - clearFrame, area.top, area.right + clearFrame, area.bottom + clearFrame};
}

std::optional<WindowPlace> LoadPlacement(const RegistryStore& settings)
{
    const RECT stored = LoadPlace(settings);
    const std::optional<RECT> screen = ScreenOf(stored);
    if (!screen)
        return std::nullopt;
    return WindowPlace{Fitted(stored, *screen), settings.GetNumber(kSettings, kMaximized, 0) != 0};
}

bool FrameAndPlace(HWND window, const RegistryStore& settings)
{
    const std::optional<WindowPlace> stored = LoadPlacement(settings);
    const RECT place = stored ? stored->rect : PlaceToFill(WorkArea(), ClearFrame(window));
    SetWindowLongPtrW(window, GWL_STYLE,
                      GetWindowLongPtrW(window, GWL_STYLE) | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN);
    Move(window, place, SWP_FRAMECHANGED);
    return stored && stored->maximized;
}

void KeepHidden(WINDOWPOS& position)
{
    if (position.flags & SWP_SHOWWINDOW)
        position.flags = (position.flags ^ SWP_SHOWWINDOW) | SWP_NOACTIVATE;
}

void ShowAsLeft(HWND window, int showCommand, bool leftMaximized)
{
    ShowWindow(window, leftMaximized && IsOpenCommand(showCommand) ? SW_SHOWMAXIMIZED : showCommand);
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!leftMaximized || !IsIconic(window) || !GetWindowPlacement(window, &placement))
        return;
    placement.flags |= WPF_RESTORETOMAXIMIZED;
    SetWindowPlacement(window, &placement);
}

void TakePlace(HWND window, const RECT& place)
{
    Move(window, place);
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
        place = placement.rcNormalPosition;
        const SIZE offset = WorkspaceOffset(place);
        OffsetRect(&place, offset.cx, offset.cy);
    }
    settings.SetNumber(kSettings, kLeft, static_cast<DWORD>(place.left));
    settings.SetNumber(kSettings, kTop, static_cast<DWORD>(place.top));
    settings.SetNumber(kSettings, kRight, static_cast<DWORD>(place.right));
    settings.SetNumber(kSettings, kBottom, static_cast<DWORD>(place.bottom));
    settings.SetNumber(kSettings, kMaximized, maximized ? 1 : 0);
}
