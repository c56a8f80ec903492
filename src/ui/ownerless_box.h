// A message box that has no owner, and still leaves nothing else of the program to be worked.
#pragma once

#include <windows.h>

// As MessageBoxW without an owner; returns its answer. Without an owner the system would leave the program's
// windows alive behind the box, and what the box asks about could be changed there. So the windows of this
// thread that a person could work are disabled while it stands, and enabled before it goes: it is one of them
// that gets the keyboard then.
int ShowOwnerlessBox(const wchar_t* text, const wchar_t* caption, UINT type);
