#include "ui/taken_message.h"

bool TakeMessage(HWND window, UINT kind, MSG* taken)
{
    if (!PeekMessageW(taken, window, kind, kind, PM_REMOVE))
        return false;
    if (taken->message != WM_QUIT)
        return true;
    PostQuitMessage(static_cast<int>(taken->wParam));
    return false;
}
