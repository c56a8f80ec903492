// A window on a monitor of another resolution.
#pragma once

#include <windows.h>

#include "mervane/window_metrics.h"
#include "support/test_windows.h"

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
