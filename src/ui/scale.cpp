#include "ui/scale.h"

#include <windows.h>

namespace {

constexpr int kGivenDpi = 96; // what pixel constants are given for

int ReadSystemDpi()
{
    HDC screen = GetDC(nullptr);
    if (!screen)
        return kGivenDpi;
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : kGivenDpi;
}

} // namespace

int SystemDpi()
{
    static const int s_dpi = ReadSystemDpi();
    return s_dpi;
}

int Scale(int pixels)
{
    return ScaleForDpi(pixels, SystemDpi());
}

int ScaleForDpi(int pixels, int dpi)
{
    return MulDiv(pixels, dpi, kGivenDpi);
}
