// What stands in front of a window of a program and keeps it disabled: a dialog, a box, the system's own
// dialogs. Not all of them are owned by it, and one that was never active is not its last active pop-up. So
// all windows of its thread are looked at.
#pragma once

#include <windows.h>

// The dialog that can be worked, or is about to be shown, while the window is disabled; null when the window
// can be worked itself or nothing is in front of it. The window may be another program's.
HWND DialogInFront(HWND window);

// Whether it is a dialog or a box.
bool IsDialog(HWND window);

// Ends a menu that the window has open; false when it has none. The menu's loop goes on until its caller's
// message has been dealt with: what is to come after the menu has to be posted.
[[nodiscard]] bool EndMenuOf(HWND window);

// For WM_HELP and kMsgHelpBehindMenu of a window that answers them: whether help is to be shown now. F1 in a
// menu is asked for by the menu's loop and by the system (WM_KEYF1) too; and what came up within the loop
// could not be worked with. So a menu that the window has open is ended, and the window gets
// kMsgHelpBehindMenu behind it, once.
constexpr UINT kMsgHelpBehindMenu = WM_APP + 0x330;
[[nodiscard]] bool IsHelpDue(HWND window, UINT message);

// Whether the system is in a loop of its own in this thread: a menu is open, a window is being moved or
// sized, or something is being dragged.
bool IsInSystemLoop();

// For a window that is about to be destroyed: ends whatever menu its thread has open, which goes with it.
void EndAnyMenu();

// For a WM_CLOSE: true when it is not the window's own, and has been handed on. A menu that is open is ended
// first and the request comes again; a disabled window's goes to the dialog in front, which comes forward. A
// question with Yes and No only comes forward.
[[nodiscard]] bool PassCloseOn(HWND window);

// For a WM_ACTIVATE, whose wParam it takes: where a disabled window is made the active one, the dialog in
// front of it is, a moment later.
void PassActivationOn(HWND window, WPARAM state);
// Shows the window as the command says, where SW_SHOW leaves it as large as it is and takes it out of the
// task bar, and brings it, or the dialog in front of it, to the foreground. It may be another program's.
void BringForward(HWND window, int showCommand);
