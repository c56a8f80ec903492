// The end of the session, as the windows of a program answer it. The system asks every window that has no
// parent, in any order; each answers for all dialogs of the program, so that it does not matter which one is
// asked.
#pragma once

#include <windows.h>

// The answer to WM_QUERYENDSESSION. FALSE while an open dialog has something that is not saved: then the
// system lists the window with the reason, until it has been told how the question ended.
[[nodiscard]] LRESULT AnswerSessionQuery(HWND window);

// WM_ENDSESSION, with its wParam. True when the session does end: all open dialogs have been told, and the
// program stores now what it stores when it is closed, since it may be ended as soon as its windows have
// returned.
[[nodiscard]] bool TakeSessionEnd(HWND window, WPARAM ends);
