// The editor's keys that work in every field: Ctrl+S and Ctrl+Enter save, Ctrl+T sets a time stamp.
#pragma once

#include <windows.h>

// The command of a character, 0 when it has none.
int CommandOfCharacter(WPARAM character);

// Makes the control answer the dialog manager's query about such a character by sending the command to the
// editor, unless the editor's command bar has it greyed. Holds until the control is destroyed.
void AddCommandKeys(HWND control, HWND editor);
