// The font that the user's settings give to messages, for windows that are no dialogs.
#pragma once

#include <windows.h>

#include "util/owners.h"

UniqueFont MakeMessageFont();
// The height of a line of text, in pixels.
int TextHeight(HWND window, HFONT font);
