#include "ui/screen/scale.h"

namespace {

constexpr int kGivenDpi = 96; // what pixel constants are given for

} // namespace

int Scale(HWND window, int pixels)
{
    return ScaleForDpi(pixels, DpiOf(window));
}

int Scale(int pixels)
{
    return ScaleForDpi(pixels, SystemDpi());
}

int ScaleForDpi(int pixels, int dpi)
{
    return MulDiv(pixels, dpi, kGivenDpi);
}

int SeenWidth(HWND window, int stored)
{
    return MulDiv(stored, DpiOf(window), SystemDpi());
}

int StoredWidth(HWND window, int seen)
{
    return MulDiv(seen, SystemDpi(), DpiOf(window));
}
