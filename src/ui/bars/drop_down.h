// Menus that drop down from a tool bar's button.
#pragma once

#include <windows.h>

// As TrackPopupMenuEx. An owner that went within the menu's loop, with the session for one, has ended the
// program: the quit message comes behind it, also where the loop has taken it.
UINT TrackMenu(HMENU menu, UINT flags, POINT corner, HWND owner, TPMPARAMS* exclude = nullptr);

// Shows the menu below the button of a command and waits: on the screen that shows most of the button, and
// beside the button where there is no room below. Returns the chosen item's identifier, 0 when none was
// chosen. The owner gets the menu's notifications but no WM_COMMAND. The click on the button that closes the
// menu does not open it again.
UINT TrackDropDown(HWND bar, int command, HMENU menu, HWND owner);
// The same with the button pressed meanwhile. Not within the bar's own notification: the bar goes on behind
// it, and may be gone by then, with the theme, the resolution or the session.
UINT TrackPressedDropDown(HWND bar, int command, HMENU menu, HWND owner);

// The place nearest to the wanted one that lies in the area.
POINT PointWithin(POINT wanted, const RECT& area);
// A menu opens on the screen that has its corner: the corner on the screen of that place that is nearest to
// the wanted one.
POINT MenuCorner(POINT wanted, const RECT& place);
