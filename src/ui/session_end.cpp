#include "ui/session_end.h"

#include "ui/dialog.h"

LRESULT AnswerSessionQuery(HWND window)
{
    const wchar_t* unsaved = Dialog::UnsavedInOpenDialogs();
    if (!unsaved)
        return TRUE;
    ShutdownBlockReasonCreate(window, unsaved);
    return FALSE;
}

bool TakeSessionEnd(HWND window, WPARAM ends)
{
    ShutdownBlockReasonDestroy(window);
    if (!ends)
        return false;
    Dialog::TellSessionEnd();
    return true;
}
