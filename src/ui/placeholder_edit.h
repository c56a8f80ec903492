// Edit controls that show a placeholder while they are empty.
#pragma once

#include <windows.h>

// While the control shows the placeholder it is selected as a whole, wherever a person clicks and whichever
// key moves the caret, so that typing replaces it and nothing is written into it. Keeps the dialog manager
// from selecting the user's own text when the tab key comes to the control. placeholder must live as long as
// the control.
void AddPlaceholder(HWND edit, const wchar_t* placeholder);

// What a dialog answers to WM_CTLCOLOREDIT where the control shows its placeholder, which is drawn grey; the
// dialog's own answer otherwise (null). The brush is the system's.
HBRUSH PlaceholderBrush(HDC dc, HWND edit);
