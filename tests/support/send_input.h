// One event of the keyboard or the mouse, given to the system as a device gives it.
#pragma once

#include <windows.h>

void SendKey(WORD key, bool down);
void SendMouse(DWORD flags); // MOUSEEVENTF_...

bool IsPointerAt(POINT point); // of the screen
