// The fonts that the user's settings give to windows that are no dialogs, at the resolution of a window.
#pragma once

#include <windows.h>

#include "util/owners.h"

// Of messages.
UniqueFont MakeMessageFont(HWND window);
// Of menus; null on failure.
UniqueFont MakeMenuFont(HWND window);
// Of tips; null on failure.
UniqueFont MakeTipFont(HWND window);
// What lists and bars show of themselves, which they make for the system's resolution; null on failure.
UniqueFont MakeControlFont(HWND window);
// Gives such a control the font where its window has another resolution than the system's; null where it
// keeps its own. The result must live as long as the control shows it.
[[nodiscard]] UniqueFont FitControlFont(HWND control);
// The height of a line of text, in pixels.
int TextHeight(HWND window, HFONT font);
