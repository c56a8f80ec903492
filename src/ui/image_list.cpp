#include "ui/image_list.h"

#include "ui/pixels.h"
#include "ui/scale.h"

UniqueImageList LoadImageStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask)
{
    const Pixels strip = LoadStrip(instance, bitmapId, width, mask, SystemDpi());
    UniqueImageList list(strip.IsEmpty() ? nullptr : CreateImageList(Scale(width), strip.height));
    if (!list || AppendToImageList(list.get(), strip) < 0)
        return nullptr;
    return list;
}
