// Edit controls that show a placeholder while they are empty.
#pragma once

#include <windows.h>

// A click that brings the focus selects the placeholder as a whole instead of setting the caret into it, so
// that typing replaces it. Keeps the dialog manager from selecting the user's own text when the tab key comes
// to the control. placeholder must live as long as the control.
void AddPlaceholderClick(HWND edit, const wchar_t* placeholder);
