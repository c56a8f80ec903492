// A list view that has nothing to list.
#pragma once

#include <windows.h>

// Makes this text the list's one item, which has the focus and the list's whole width.
void ShowOnlyItem(HWND list, const wchar_t* text);
