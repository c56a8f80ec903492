#include "editor/placeholder_edit.h"

#include <commctrl.h>

#include "data/journal_entry.h"
#include "editor/body_text.h"

namespace {

constexpr UINT_PTR kSubclass = 3;

bool Shows(HWND edit, const wchar_t* placeholder)
{
    return GetWindowTextLengthW(edit) == static_cast<int>(wcslen(placeholder)) &&
           IsPlaceholder(TextOf(edit), placeholder);
}

LRESULT CALLBACK Procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data)
{
    switch (message) {
    case WM_GETDLGCODE: return DefSubclassProc(edit, message, wParam, lParam) & ~DLGC_HASSETSEL;
    case WM_LBUTTONDOWN:
        if (GetFocus() != edit && Shows(edit, reinterpret_cast<const wchar_t*>(data))) {
            SetFocus(edit);
            SendMessageW(edit, EM_SETSEL, 0, -1);
            return 0;
        }
        break;
    case WM_NCDESTROY: RemoveWindowSubclass(edit, Procedure, kSubclass); break;
    default: break;
    }
    return DefSubclassProc(edit, message, wParam, lParam);
}

} // namespace

void AddPlaceholderClick(HWND edit, const wchar_t* placeholder)
{
    SetWindowSubclass(edit, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(placeholder));
}
