#include "ui/dialog_in_front.h"

#include "ui/taken_message.h"

namespace {

struct FoundDialogs {
    HWND shown = nullptr;
    HWND opening = nullptr; // its loop runs before it is shown
};

// The windows come from the front to the back.
BOOL CALLBACK FindWorkableDialog(HWND window, LPARAM lParam)
{
    auto* found = reinterpret_cast<FoundDialogs*>(lParam);
    if (!IsWindowEnabled(window) || !IsDialog(window))
        return TRUE;
    if (!IsWindowVisible(window)) {
        found->opening = window;
        return TRUE;
    }
    found->shown = window;
    return FALSE;
}

// Some systems would take a close for an answer that a question does not offer. Nor does one that offers
// Cancel take it: where all windows of a program are asked, the first request makes the question and the
// next would take it away before anybody has seen it.
bool CanBeCancelled(HWND dialog)
{
    return !GetDlgItem(dialog, IDYES);
}

bool IsMenuOpen(GUITHREADINFO* info)
{
    *info = {};
    info->cbSize = sizeof *info;
    return GetGUIThreadInfo(GetCurrentThreadId(), info) && (info->flags & GUI_INMENUMODE);
}

// Some systems name the menu's own window.
HWND MenuOwner(const GUITHREADINFO& info)
{
    constexpr ULONG_PTR kMenuAtom = 32768;
    const bool isMenu = GetClassLongPtrW(info.hwndMenuOwner, GCW_ATOM) == kMenuAtom;
    return isMenu ? GetWindow(info.hwndMenuOwner, GW_OWNER) : info.hwndMenuOwner;
}

void DropPosted(UINT message)
{
    MSG posted;
    while (TakeMessage(nullptr, message, &posted)) {
    }
}

// Not while the window is still becoming the active one.
void CALLBACK ShowDialogInFront(HWND window, UINT, UINT_PTR timer, DWORD)
{
    KillTimer(window, timer);
    HWND dialog = GetActiveWindow() == window ? DialogInFront(window) : nullptr;
    if (dialog)
        SetForegroundWindow(dialog);
}

} // namespace

bool IsDialog(HWND window)
{
    constexpr ULONG_PTR kDialogAtom = 32770;
    return GetClassLongPtrW(window, GCW_ATOM) == kDialogAtom;
}

HWND DialogInFront(HWND window)
{
    FoundDialogs found;
    if (IsWindow(window) && !IsWindowEnabled(window))
        EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), FindWorkableDialog,
                          reinterpret_cast<LPARAM>(&found));
    return found.shown ? found.shown : found.opening;
}

// A menu of a window that is disabled has been ended by that, and waits for what was opened within its loop.
bool EndMenuOf(HWND window)
{
    GUITHREADINFO info;
    return IsWindowEnabled(window) && IsMenuOpen(&info) && MenuOwner(info) == window && EndMenu();
}

bool IsHelpDue(HWND window, UINT message)
{
    constexpr UINT kKeyF1 = 0x004D;
    DropPosted(kKeyF1);
    if (message != WM_HELP || !EndMenuOf(window))
        return true;
    DropPosted(kMsgHelpBehindMenu);
    PostMessageW(window, kMsgHelpBehindMenu, 0, 0);
    return false;
}

bool IsInSystemLoop()
{
    GUITHREADINFO info;
    return IsMenuOpen(&info) || (info.flags & GUI_INMOVESIZE) || info.hwndCapture;
}

// Some systems tell the menu's loop by a message to the menu's own window, which may be gone before it is
// read; the loop takes it from the thread's queue as well.
void EndAnyMenu()
{
    GUITHREADINFO info;
    if (IsMenuOpen(&info) && EndMenu())
        PostThreadMessageW(GetCurrentThreadId(), WM_CANCELMODE, 0, 0);
}

bool PassCloseOn(HWND window)
{
    if (EndMenuOf(window)) {
        PostMessageW(window, WM_CLOSE, 0, 0);
        return true;
    }
    if (IsWindowEnabled(window))
        return false;
    if (HWND dialog = DialogInFront(window)) {
        SetForegroundWindow(dialog);
        if (CanBeCancelled(dialog))
            PostMessageW(dialog, WM_CLOSE, 0, 0);
    }
    return true;
}

void PassActivationOn(HWND window, WPARAM state)
{
    constexpr UINT_PTR kTimer = 0x0F07;
    if (LOWORD(state) != WA_INACTIVE && !IsWindowEnabled(window))
        SetTimer(window, kTimer, USER_TIMER_MINIMUM, ShowDialogInFront);
}

void BringForward(HWND window, int showCommand)
{
    ShowWindow(window, showCommand == SW_SHOW && IsIconic(window) ? SW_RESTORE : showCommand);
    HWND dialog = DialogInFront(window);
    SetForegroundWindow(dialog ? dialog : window);
    UpdateWindow(window);
}
