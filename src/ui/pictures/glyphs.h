// Small pictures that are drawn at the resolution that they are shown in.
#pragma once

#include <windows.h>

#include "ui/pictures/pixels.h"

// A question mark and a cross, side by side, each side pixels wide and high, in one colour. Empty on failure.
Pixels DrawAdornmentGlyphs(int side, COLORREF color);
