// A tool bar worked with the keyboard: the tab key reaches it, the arrow keys walk over the enabled buttons,
// Enter and the space bar press the one that is lit, Down and F4 drop a menu. A press does what a click does:
// it checks a check button and sends WM_COMMAND, or TBN_DROPDOWN for a drop-down button.
#pragma once

#include <windows.h>

// The bar has the WS_TABSTOP style; the keys work until it is destroyed.
void AddBarKeys(HWND bar);
