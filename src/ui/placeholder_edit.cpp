#include "ui/placeholder_edit.h"

#include <commctrl.h>

#include "ui/control_text.h"
#include "util/compare_text.h"

namespace {

constexpr UINT_PTR kSubclass = 3;
constexpr UINT kMsgShowsPlaceholder = WM_APP + 0x350; // 1 where it does; of any other control 0

// Spares reading a long text with every key.
bool Shows(HWND edit, const wchar_t* placeholder)
{
    return GetWindowTextLengthW(edit) == static_cast<int>(wcslen(placeholder)) &&
           IsSameForSystem(ReadText(edit).value_or(L""), placeholder, Case::Matters);
}

bool MovesTheCaret(UINT message)
{
    switch (message) {
    case WM_SETFOCUS:
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
    case WM_UNDO:
    case EM_UNDO: return true;
    default: return false;
    }
}

LRESULT CALLBACK Procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data)
{
    const auto* placeholder = reinterpret_cast<const wchar_t*>(data);
    switch (message) {
    case kMsgShowsPlaceholder: return Shows(edit, placeholder);
    case WM_GETDLGCODE: return DefSubclassProc(edit, message, wParam, lParam) & ~DLGC_HASSETSEL;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        if (!Shows(edit, placeholder))
            break;
        SetFocus(edit);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        return 0; // so that a drag selects no part of it either
    case WM_NCDESTROY: RemoveWindowSubclass(edit, Procedure, kSubclass); break;
    default: break;
    }
    const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
    if (MovesTheCaret(message) && GetFocus() == edit && Shows(edit, placeholder))
        SendMessageW(edit, EM_SETSEL, 0, -1);
    return result;
}

} // namespace

void AddPlaceholder(HWND edit, const wchar_t* placeholder)
{
    SetWindowSubclass(edit, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(placeholder));
}

HBRUSH PlaceholderBrush(HDC dc, HWND edit)
{
    if (!SendMessageW(edit, kMsgShowsPlaceholder, 0, 0))
        return nullptr;
    SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return GetSysColorBrush(COLOR_WINDOW);
}
