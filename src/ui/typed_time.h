// Date and time pickers take typed digits only when a field is full or when they are left. Until then the
// picker neither tells of them nor has them in its value.
#pragma once

#include <windows.h>

// Sent to a dialog when a digit was typed into one of its pickers, whose identifier is wParam. The picker's
// value may not have changed yet.
constexpr UINT kMsgTimeTyped = WM_APP + 3;

// Until the picker is destroyed: the dialog is sent kMsgTimeTyped, and typing goes into the first field when
// the picker gets the keyboard.
void TellTyping(HWND picker, HWND dialog);

// Makes the dialog's picker that has the keyboard take what has been typed, which it tells as a change.
// Nothing when no picker has it. Call it before a picker is read.
void TakeTypedTime(HWND dialog);
