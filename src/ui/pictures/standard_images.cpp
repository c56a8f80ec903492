#include "ui/pictures/standard_images.h"

#include <iterator>

#include "res/resource.h"
#include "ui/pictures/canvas.h"
#include "ui/pictures/image_list.h"
#include "ui/screen/scale.h"
#include "util/owners.h"

namespace {

constexpr int kOurs[] = {STD_CUT, STD_COPY, STD_PASTE, STD_DELETE, STD_FIND}; // in the order of IDB_STANDARD

constexpr int kSystemImagesDpi = 96;

// The list's images side by side over a background.
Pixels DrawImages(HIMAGELIST list, int count, COLORREF background)
{
    const Canvas canvas(count * kStandardImageSide, kStandardImageSide, background);
    for (int i = 0; i < count; ++i)
        ImageList_Draw(list, i, canvas.Dc(), i * kStandardImageSide, 0, ILD_TRANSPARENT);
    return canvas.Read();
}

// What a pixel is, from how it looks over black and over white.
uint32_t Uncover(uint32_t overBlack, uint32_t overWhite)
{
    const auto channel = [](uint32_t pixel, int shift) { return static_cast<int>(pixel >> shift & 0xFF); };
    const auto clamp = [](int value) { return static_cast<uint32_t>(value > 255 ? 255 : value); };
    const int alpha = 255 - (channel(overWhite, 8) - channel(overBlack, 8));
    if (alpha <= 0)
        return 0;
    uint32_t result = clamp(alpha) << 24;
    for (const int shift : {16, 8, 0})
        result |= clamp(channel(overBlack, shift) * 255 / alpha) << shift;
    return result;
}

Pixels ReadImages(HIMAGELIST list)
{
    const int count = ImageList_GetImageCount(list);
    int width = 0;
    int height = 0;
    if (count <= 0 || !ImageList_GetIconSize(list, &width, &height) || width != kStandardImageSide)
        return {};
    Pixels pixels = DrawImages(list, count, RGB(0, 0, 0));
    const Pixels overWhite = DrawImages(list, count, RGB(255, 255, 255));
    if (overWhite.IsEmpty())
        return {};
    for (size_t i = 0; i < pixels.argb.size(); ++i)
        pixels.argb[i] = Uncover(pixels.argb[i], overWhite.argb[i]);
    return pixels;
}

// Only a tool bar hands them out. It is never shown, so the display need not hear of it.
Pixels LoadSystemImages()
{
    const UniqueWindow bar(CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE,
                                           nullptr, nullptr, nullptr));
    if (!bar)
        return {};
    SendMessageW(bar.get(), TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(bar.get(), TB_LOADIMAGES, IDB_STD_SMALL_COLOR, reinterpret_cast<LPARAM>(HINST_COMMCTRL));
    return ReadImages(reinterpret_cast<HIMAGELIST>(SendMessageW(bar.get(), TB_GETIMAGELIST, 0, 0)));
}

void CopyImage(const Pixels& from, int image, Pixels* to, int place)
{
    const int side = to->height;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            to->Set(place * side + x, y, from.At(image * side + x, y));
}

void PutOursOver(Pixels* images, int dpi)
{
    const Pixels ours =
        LoadStrip(GetModuleHandleW(nullptr), IDB_STANDARD, kStandardImageSide, kImageMask, dpi);
    const int side = images->height;
    if (ours.IsEmpty() || ours.height != side || images->width < (STD_PRINT + 1) * side)
        return;
    for (int i = 0; i < static_cast<int>(std::size(kOurs)); ++i)
        if (dpi != kSystemImagesDpi || kOurs[i] == STD_DELETE)
            CopyImage(ours, i, images, kOurs[i]);
}

} // namespace

Pixels LoadStandardImages(int dpi)
{
    const int side = ScaleForDpi(kStandardImageSide, dpi);
    Pixels images = ScaleStrip(LoadSystemImages(), kStandardImageSide, side, side);
    PutOursOver(&images, dpi);
    return images;
}
