#include "editor/command_keys.h"

#include <commctrl.h>

#include "res/resource.h"

namespace {

constexpr UINT_PTR kSubclass = 2;
constexpr WPARAM kCtrlEnter = 10;
constexpr WPARAM kCtrlS = 19;
constexpr WPARAM kCtrlT = 20;

HWND EditorOf(DWORD_PTR data)
{
    return reinterpret_cast<HWND>(data);
}

void SendCommand(HWND editor, int command)
{
    if (SendDlgItemMessageW(editor, IDC_EDITOR_BAR, TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0))
        SendMessageW(editor, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

bool IsCtrlEnter(UINT message, WPARAM key)
{
    return message == WM_KEYDOWN && key == VK_RETURN && GetKeyState(VK_CONTROL) < 0;
}

// True when the control is to get the message itself. The dialog manager asks once for each message; a key's
// character comes as a message of its own, except that it takes Ctrl+Enter for the default button unless the
// control wants it.
bool OnQuery(HWND editor, const MSG& message)
{
    if (message.message == WM_CHAR)
        if (const int command = CommandOfCharacter(message.wParam)) {
            SendCommand(editor, command);
            return true;
        }
    return IsCtrlEnter(message.message, message.wParam);
}

LRESULT CALLBACK Procedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data)
{
    switch (message) {
    case WM_GETDLGCODE: {
        const LRESULT code = DefSubclassProc(control, message, wParam, lParam);
        const auto* query = reinterpret_cast<const MSG*>(lParam);
        return query && OnQuery(EditorOf(data), *query) ? code | DLGC_WANTMESSAGE : code;
    }
    // What has been carried out must not be typed as well: Ctrl+Enter would break the body's line.
    case WM_CHAR:
        if (CommandOfCharacter(wParam))
            return 0;
        break;
    case WM_KEYDOWN:
        if (IsCtrlEnter(message, wParam))
            return 0;
        break;
    case WM_NCDESTROY: RemoveWindowSubclass(control, Procedure, kSubclass); break;
    default: break;
    }
    return DefSubclassProc(control, message, wParam, lParam);
}

} // namespace

int CommandOfCharacter(WPARAM character)
{
    switch (character) {
    case kCtrlEnter:
    case kCtrlS: return CMD_SAVE;
    case kCtrlT: return CMD_TIME_STAMP;
    default: return 0;
    }
}

void AddCommandKeys(HWND control, HWND editor)
{
    SetWindowSubclass(control, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(editor));
}
