// Image lists from the program's bitmap resources, at a resolution.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "util/owners.h"

constexpr COLORREF kImageMask = RGB(0xC0, 0xC0, 0xC0);

// A strip of images, each width pixels wide at 96 dpi and as high as the bitmap. mask CLR_NONE: no mask
// colour. height: the pixels that an image is to take, with clear rows above and below where it is lower.
// Null when the resource is missing.
UniqueImageList LoadImageStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask, int dpi,
                               int height = 0);
// The same images for buttons that cannot be pressed.
UniqueImageList LoadGreyedImageStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask, int dpi,
                                     int height = 0);
