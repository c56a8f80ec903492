// Waiting with windows that stay alive to the eye.
#pragma once

#include <windows.h>

// Shows the hourglass for so many milliseconds, in which windows of this thread paint and messages that other
// threads send are answered. Keys, clicks, commands and timers stay in the queue in their order.
void PaintWhileWaiting(DWORD milliseconds);

// Inside PaintWhileWaiting: what waits is in the midst of something.
[[nodiscard]] bool IsPaintWaiting();

// For a window's procedure, before anything else: true for a message that was sent during such a wait and
// asks for something to be done (a close, a command, a system command). It comes again once the wait is over
// and messages are looked at, as if it had been posted.
[[nodiscard]] bool PutOffWhileWaiting(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
