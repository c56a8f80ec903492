#pragma once

#include <windows.h>

// Has a text whose lines end in a lone CR or LF pasted into the body with CR LF, as it will be stored: an
// edit control breaks a line at nothing else. Holds until the control is destroyed.
void AddBodyPaste(HWND body);
