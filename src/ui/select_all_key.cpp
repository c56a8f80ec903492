#include "ui/select_all_key.h"

#include <commctrl.h>

namespace {

constexpr UINT_PTR kSubclass = 5;
constexpr WPARAM kCtrlA = 1; // the character that Ctrl+A types

LRESULT CALLBACK Procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == WM_CHAR && wParam == kCtrlA) {
        SendMessageW(edit, EM_SETSEL, 0, -1);
        return 0;
    }
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(edit, Procedure, kSubclass);
    return DefSubclassProc(edit, message, wParam, lParam);
}

} // namespace

void AddSelectAllKeys(HWND parent)
{
    HWND edit = nullptr;
    while ((edit = FindWindowExW(parent, edit, WC_EDITW, nullptr)) != nullptr)
        if (GetWindowLongPtrW(edit, GWL_STYLE) & ES_MULTILINE)
            SetWindowSubclass(edit, Procedure, kSubclass, 0);
}
