#include "ui/typed_time.h"

#include <commctrl.h>

#include <iterator>

#include "ui/wine.h"
#include "util/compare_text.h"

namespace {

constexpr UINT_PTR kSubclass = 1;

bool IsPicker(HWND window)
{
    wchar_t name[32] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return IsSameName(name, DATETIMEPICK_CLASSW);
}

// Wine's picker has no field selected when it gets the keyboard, and loses the digits that are typed then. A
// click selects its field afterwards.
void SelectFirstField(HWND picker)
{
    if (IsUnderWine())
        SendMessageW(picker, WM_KEYDOWN, VK_RIGHT, 0);
}

LRESULT CALLBACK Procedure(HWND picker, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(picker, Procedure, kSubclass);
    const LRESULT result = DefSubclassProc(picker, message, wParam, lParam);
    if (message == WM_SETFOCUS)
        SelectFirstField(picker);
    if (message == WM_CHAR && wParam >= L'0' && wParam <= L'9')
        SendMessageW(reinterpret_cast<HWND>(data), kMsgTimeTyped, static_cast<WPARAM>(GetDlgCtrlID(picker)),
                     0);
    return result;
}

} // namespace

void TellTyping(HWND picker, HWND dialog)
{
    SetWindowSubclass(picker, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(dialog));
}

// Leaving it is what every system's picker takes for the end of typing.
void TakeTypedTime(HWND dialog)
{
    HWND focus = GetFocus();
    if (!focus || !IsChild(dialog, focus) || !IsPicker(focus))
        return;
    SetFocus(nullptr);
    SetFocus(focus);
}
