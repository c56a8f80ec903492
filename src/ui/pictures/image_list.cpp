#include "ui/pictures/image_list.h"

#include "ui/pictures/pixels.h"
#include "ui/screen/scale.h"

namespace {

UniqueImageList MakeList(const Pixels& strip, int width)
{
    UniqueImageList list(strip.IsEmpty() ? nullptr : CreateImageList(width, strip.height));
    if (!list || AppendToImageList(list.get(), strip) < 0)
        return nullptr;
    return list;
}

} // namespace

UniqueImageList LoadImageStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask, int dpi,
                               int height)
{
    return MakeList(InTheMiddle(LoadStrip(instance, bitmapId, width, mask, dpi), height),
                    ScaleForDpi(width, dpi));
}

UniqueImageList LoadGreyedImageStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask, int dpi,
                                     int height)
{
    return MakeList(InTheMiddle(Greyed(LoadStrip(instance, bitmapId, width, mask, dpi)), height),
                    ScaleForDpi(width, dpi));
}
