#include "ui/hourglass.h"

#include <windows.h>

void ShowHourglass()
{
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
}

// No pointer at all is what would be seen until the mouse is moved: the window below it is asked for its own.
void RemoveHourglass()
{
    SetCursor(nullptr);
    POINT mouse{};
    GetCursorPos(&mouse);
    HWND window = WindowFromPoint(mouse);
    if (!window || GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId())
        return;
    const LRESULT place = SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(mouse.x, mouse.y));
    SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(place, WM_MOUSEMOVE));
}
