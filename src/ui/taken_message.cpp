#include "ui/taken_message.h"

bool TakeMessage(UINT kind, MSG* taken)
{
    if (!PeekMessageW(taken, nullptr, kind, kind, PM_REMOVE))
        return false;
    if (taken->message != WM_QUIT)
        return true;
    PostQuitMessage(static_cast<int>(taken->wParam));
    return false;
}
