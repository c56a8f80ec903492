// Waiting with windows that stay alive to the eye.
#pragma once

#include <windows.h>

// Shows the hourglass for so many milliseconds, in which windows of this thread paint and messages that other
// threads send are answered. Keys, clicks, commands and timers stay in the queue in their order.
void PaintWhileWaiting(DWORD milliseconds);
