// The desktop's work area: the screen without the task bar, in pixels (SPI_GETWORKAREA).
#pragma once

#include <windows.h>

RECT WorkArea();
// The place of a window of this size, in pixels at 96 dpi, in the middle of the work area and no larger than
// it.
RECT MiddlePlace(int width, int height);
