#include "list/not_done_box.h"

void TellNotDone(HWND owner, const wchar_t* what, StoreTrouble trouble)
{
    MessageBoxW(owner, NotDoneText(what, trouble).c_str(), L"Journal", MB_OK | MB_ICONEXCLAMATION);
}
