// The icon that every program of ours carries under the same identifier.
#pragma once

#include <windows.h>

#include "util/owners.h"

// Gives the window the program's icon; which is ICON_SMALL or ICON_BIG. The result must live as long as the
// window shows it.
[[nodiscard]] UniqueIcon SetProgramIcon(HWND window, WPARAM which);
