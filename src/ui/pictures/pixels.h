// Pictures in memory: how images from resources are read, scaled and put into image lists.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <vector>

// Rows from the top, 0xAARRGGBB, colour not multiplied by alpha.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> argb;

    uint32_t At(int x, int y) const { return argb[Index(x, y)]; }
    void Set(int x, int y, uint32_t value) { argb[Index(x, y)] = value; }
    bool IsEmpty() const { return argb.empty(); }

  private:
    size_t Index(int x, int y) const
    {
        return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
    }
};

// Transparent everywhere; empty when a side is not positive.
Pixels MakePixels(int width, int height);

// A bitmap resource; what has the mask's colour is transparent (CLR_NONE: nothing is). Empty when it is
// missing.
Pixels LoadPixels(HINSTANCE instance, int bitmapId, COLORREF mask);

// A strip of images, each width wide, with each image brought to newWidth x newHeight on its own. A pixel of
// the result is the average of what it covers: at whole factors every pixel becomes a square, otherwise edges
// stay as sharp as the resolution allows, and transparent pixels lend no colour to their neighbours.
Pixels ScaleStrip(const Pixels& strip, int width, int newWidth, int newHeight);

// Without colour and half as strong: what a button shows that cannot be pressed. The systems' own greying
// goes from pale to hardly to be seen.
Pixels Greyed(const Pixels& pixels);

// The leftmost columns.
Pixels CutLeft(const Pixels& pixels, int width);

// With clear rows above and below, as many of the one as of the other; no lower than it is.
Pixels InTheMiddle(const Pixels& pixels, int height);

// The images of a bitmap resource, each width wide at 96 dpi and as high as the bitmap, at another
// resolution: as they are drawn for it, or for one of which it is a whole multiple (see resource.h). Where
// none is there they are averaged: from 144 dpi on from those at 192 dpi, below and without these from the
// bitmap's own. Empty when the bitmap is missing.
Pixels LoadStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask, int dpi);

// An image list for images of this size with transparency; the caller owns it. Null on failure.
HIMAGELIST CreateImageList(int width, int height);
// Appends a strip of images, as high as the list's. Returns the index of the first one, -1 on failure.
int AppendToImageList(HIMAGELIST list, const Pixels& strip);
