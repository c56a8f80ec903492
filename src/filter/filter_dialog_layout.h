// Where the filter's dialog puts the controls that its template does not have, in pixels of its client area.
#pragma once

#include <windows.h>

// The list of months or of categories, one at a time.
RECT ListPlace(HWND dialog);
// The date picker beside its label.
RECT PickerPlace(HWND dialog, HWND label);
