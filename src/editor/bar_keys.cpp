#include "editor/bar_keys.h"

#include <commctrl.h>

#include "ui/taken_message.h"

namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr int kNone = -1;

LRESULT Ask(HWND bar, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    return SendMessageW(bar, message, wParam, lParam);
}

int ButtonCount(HWND bar)
{
    return static_cast<int>(Ask(bar, TB_BUTTONCOUNT));
}
int Lit(HWND bar)
{
    return static_cast<int>(Ask(bar, TB_GETHOTITEM));
}
void Light(HWND bar, int index)
{
    Ask(bar, TB_SETHOTITEM, static_cast<WPARAM>(index));
}

TBBUTTON ButtonAt(HWND bar, int index)
{
    TBBUTTON button{};
    Ask(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    return button;
}

bool CanBePressed(HWND bar, int index)
{
    const TBBUTTON button = ButtonAt(bar, index);
    return !(button.fsStyle & BTNS_SEP) && (button.fsState & TBSTATE_ENABLED) &&
           !(button.fsState & TBSTATE_HIDDEN);
}

// The next button that can be pressed from an index on, in a direction; the index it started from when there
// is none.
int Next(HWND bar, int from, int step)
{
    for (int i = from + step; i >= 0 && i < ButtonCount(bar); i += step)
        if (CanBePressed(bar, i))
            return i;
    return from;
}

void DropDown(HWND bar, const TBBUTTON& button)
{
    NMTOOLBARW notification{};
    notification.hdr.hwndFrom = bar;
    notification.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(bar));
    notification.hdr.code = TBN_DROPDOWN;
    notification.iItem = button.idCommand;
    SendMessageW(GetParent(bar), WM_NOTIFY, notification.hdr.idFrom, reinterpret_cast<LPARAM>(&notification));
}

void Press(HWND bar, int index)
{
    const TBBUTTON button = ButtonAt(bar, index);
    if (button.fsStyle & BTNS_DROPDOWN)
        return DropDown(bar, button);
    if (button.fsStyle & BTNS_CHECK) {
        const bool check = (button.fsStyle & BTNS_GROUP) || !(button.fsState & TBSTATE_CHECKED);
        Ask(bar, TB_CHECKBUTTON, static_cast<WPARAM>(button.idCommand), MAKELPARAM(check, 0));
    }
    SendMessageW(GetParent(bar), WM_COMMAND, MAKEWPARAM(button.idCommand, BN_CLICKED),
                 reinterpret_cast<LPARAM>(bar));
}

void MaybePress(HWND bar, bool dropDownOnly)
{
    const int lit = Lit(bar);
    if (lit < 0 || !CanBePressed(bar, lit))
        return;
    if (!dropDownOnly || (ButtonAt(bar, lit).fsStyle & BTNS_DROPDOWN))
        Press(bar, lit);
}

// The key's character waits in the queue; a menu would take it for its own.
void DropCharacter(HWND bar)
{
    MSG character;
    (void)TakeMessage(bar, WM_CHAR, &character);
}

bool OnKey(HWND bar, WPARAM key)
{
    switch (key) {
    case VK_LEFT:
    case VK_UP: Light(bar, Next(bar, Lit(bar), -1)); return true;
    case VK_RIGHT: Light(bar, Next(bar, Lit(bar), 1)); return true;
    case VK_HOME: Light(bar, Next(bar, kNone, 1)); return true;
    case VK_END: Light(bar, Next(bar, ButtonCount(bar), -1)); return true;
    case VK_DOWN:
    case VK_F4: MaybePress(bar, true); return true;
    case VK_RETURN:
    case VK_SPACE:
        DropCharacter(bar);
        MaybePress(bar, false);
        return true;
    default: return false;
    }
}

// Enter presses a button and not the dialog's default one. With Ctrl it is the editor's own key.
bool WantsKey(const MSG* message)
{
    return message && message->message == WM_KEYDOWN && message->wParam == VK_RETURN &&
           GetKeyState(VK_CONTROL) >= 0;
}

LRESULT CALLBACK Procedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    switch (message) {
    case WM_GETDLGCODE:
        return DefSubclassProc(bar, message, wParam, lParam) | DLGC_WANTARROWS |
               (WantsKey(reinterpret_cast<const MSG*>(lParam)) ? DLGC_WANTMESSAGE : 0);
    case WM_KEYDOWN:
        if (GetKeyState(VK_CONTROL) >= 0 && OnKey(bar, wParam))
            return 0;
        break;
    case WM_SETFOCUS: {
        const LRESULT result = DefSubclassProc(bar, message, wParam, lParam);
        if (Lit(bar) < 0 || !CanBePressed(bar, Lit(bar)))
            Light(bar, Next(bar, kNone, 1));
        return result;
    }
    case WM_KILLFOCUS: Light(bar, kNone); break;
    case WM_NCDESTROY: RemoveWindowSubclass(bar, Procedure, kSubclass); break;
    default: break;
    }
    return DefSubclassProc(bar, message, wParam, lParam);
}

} // namespace

void AddBarKeys(HWND bar)
{
    SetWindowSubclass(bar, Procedure, kSubclass, 0);
}
