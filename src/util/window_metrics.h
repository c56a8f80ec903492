// The system's measures at the resolution of a window: each monitor may have its own, and a window that is
// moved to another one, or whose monitor gets another scale, is told so while it is open (WM_DPICHANGED).
//
// What not every Windows 10 has is looked up here, and the system's resolution answers where it is missing.
#pragma once

#include <windows.h>

namespace mervane {

// The resolution, in dots per inch, that the system has for programs as a whole; 96 when it does not tell.
// What is stored in pixels is stored in pixels of this one.
int SystemDpi();

// The resolution that a window is to be laid out for: what its top-level window was told last, otherwise what
// the system says of it. The system's for a null window.
int DpiOf(HWND window);
// A top-level window has got WM_DPICHANGED, with wParam. Until it is forgotten, at its end, it has that
// resolution.
void NoteDpi(HWND window, WPARAM dpi);
void ForgetDpi(HWND window);

// GetSystemMetrics at the window's resolution.
int MetricOf(HWND window, int index);
// What the frame of a window takes beside its client area, the menu left out (AdjustWindowRectEx).
SIZE FrameOf(HWND window);
// A change of the system's colours or settings is told to top-level windows alone: hands it on to the
// controls of the window that has got this message, if it is one of those.
void PassToControls(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// SystemParametersInfo at a resolution: for SPI_GETNONCLIENTMETRICS and SPI_GETICONTITLELOGFONT.
bool ParametersFor(int dpi, UINT action, UINT size, void* parameters);

} // namespace mervane
