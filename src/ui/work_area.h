// The desktop's work area: the screen without the task bar, in pixels (SPI_GETWORKAREA).
#pragma once

#include <windows.h>

RECT WorkArea();
