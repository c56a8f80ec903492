// Messages that are taken out of this thread's queue before its loop sees them.
#pragma once

#include <windows.h>

// Takes the next one of the kind for the window, null for any; false where there is none. The quit message,
// which the system hands out whatever is asked for, stays.
bool TakeMessage(HWND window, UINT kind, MSG* taken);
