// The one helper that scales pixel constants. They are given for 96 dpi; each window has the resolution of
// its monitor.
#pragma once

#include <windows.h>

#include "util/window_metrics.h"

using mervane::DpiOf;
using mervane::MetricOf;
using mervane::SystemDpi;

// A 96-dpi pixel constant at the resolution of the window, or of the window that it is in, rounded to the
// nearest pixel; at 96 dpi the constant itself.
int Scale(HWND window, int pixels);
// The same at the system's resolution: for what is stored, and for what has no window yet.
int Scale(int pixels);
int ScaleForDpi(int pixels, int dpi);

// Widths that are stored are pixels at the system's resolution, so that they mean what they meant before
// windows had resolutions of their own. On a monitor that has it they are the pixels that are seen.
int SeenWidth(HWND window, int stored);
int StoredWidth(HWND window, int seen);
