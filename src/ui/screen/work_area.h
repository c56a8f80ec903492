// Work areas: a screen without the task bar, in pixels.
#pragma once

#include <windows.h>

// The main screen's (SPI_GETWORKAREA).
RECT WorkArea();
// That of the screen that shows most of the window, minimised or not; the main one's for a null window.
RECT WorkAreaAt(HWND window);
// The place of a window of this size, in pixels at 96 dpi, in the middle of the main screen's work area and
// no larger than it.
RECT MiddlePlace(int width, int height);
