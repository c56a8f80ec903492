// A window on a monitor of another resolution.
#pragma once

#include <windows.h>

#include "support/test_windows.h"
#include "util/window_metrics.h"

// Tells a top-level window that it has times / parts of its resolution now, as the system does when it comes
// to another monitor, with a place of as much of its size.
inline void TellResolution(HWND window, int times, int parts = 1)
{
    const int dpi = MulDiv(mervane::DpiOf(window), times, parts);
    RECT place{};
    GetWindowRect(window, &place);
    place.right = place.left + MulDiv(place.right - place.left, times, parts);
    place.bottom = place.top + MulDiv(place.bottom - place.top, times, parts);
    SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    PumpMessages();
}

// The same of a dialog, whose size and controls are scaled behind the message, before what has been posted,
// as by the dialog manager of Windows.
inline void TellDialogResolution(HWND dialog, int times, int parts = 1)
{
    const int dpi = MulDiv(mervane::DpiOf(dialog), times, parts);
    RECT whole{};
    GetWindowRect(dialog, &whole);
    const auto scaled = [=](LONG pixels) { return MulDiv(pixels, times, parts); };
    SendMessageW(dialog, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&whole));
    SetWindowPos(dialog, nullptr, 0, 0, scaled(whole.right - whole.left), scaled(whole.bottom - whole.top),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place{};
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        SetWindowPos(child, nullptr, scaled(place.left), scaled(place.top), scaled(place.right - place.left),
                     scaled(place.bottom - place.top), SWP_NOZORDER | SWP_NOACTIVATE);
    }
    PumpMessages();
}
