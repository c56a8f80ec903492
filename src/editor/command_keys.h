// The editor's keys that work in every field: Ctrl+S and Ctrl+Enter save, Ctrl+T sets a time stamp.
#pragma once

#include <windows.h>

// The command of a character, 0 when it has none.
int CommandOfCharacter(WPARAM character);

// The dialog manager asks the control about such a character. The control then sends the command to the
// editor, unless the editor's bar has it greyed. Holds until the control is destroyed.
void AddCommandKeys(HWND control, HWND editor);
