// Ctrl+A in edit controls of several lines, which on Windows do not know it.
#pragma once

#include <windows.h>

// For all of them that a window has by now.
void AddSelectAllKeys(HWND parent);
