#include "ui/image_list.h"

#include "ui/pixels.h"
#include "ui/scale.h"

namespace {

UniqueImageList MakeList(const Pixels& strip, int width)
{
    UniqueImageList list(strip.IsEmpty() ? nullptr : CreateImageList(Scale(width), strip.height));
    if (!list || AppendToImageList(list.get(), strip) < 0)
        return nullptr;
    return list;
}

} // namespace

UniqueImageList LoadImageStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask)
{
    return MakeList(LoadStrip(instance, bitmapId, width, mask, SystemDpi()), width);
}

UniqueImageList LoadGreyedImageStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask)
{
    return MakeList(Greyed(LoadStrip(instance, bitmapId, width, mask, SystemDpi())), width);
}
