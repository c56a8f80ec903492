#include "ui/pictures/pixels.h"

#include <algorithm>

#include "res/resource.h"
#include "ui/screen/scale.h"
#include "util/owners.h"

namespace {

constexpr int kMaxSide = 16'384;
constexpr uint32_t kColorBits = 0x00FFFFFF;
constexpr uint32_t kOpaque = 0xFF000000;
constexpr uint32_t kHalfAlpha = 128;

// The resolutions that bitmaps are drawn for, and what is added to the bitmap's number there.
struct Drawing {
    int dpi;
    int idOffset;
};
constexpr Drawing kGiven{96, 0};
constexpr Drawing kDouble{192, IDB_AT_192_DPI};
constexpr int kDoubleFrom = 144; // dpi
constexpr Drawing kFinestFirst[] = {{288, IDB_AT_288_DPI}, {240, IDB_AT_240_DPI}, kDouble,
                                    {144, IDB_AT_144_DPI}, {120, IDB_AT_120_DPI}, kGiven};

BITMAPINFO DescribeRows(int width, int height)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

uint32_t ToPixelColor(COLORREF color)
{
    return static_cast<uint32_t>(GetRValue(color)) << 16 | static_cast<uint32_t>(GetGValue(color)) << 8 |
           GetBValue(color);
}

Pixels ReadBitmap(HBITMAP bitmap)
{
    BITMAP description{};
    if (!GetObjectW(bitmap, sizeof description, &description))
        return {};
    Pixels pixels = MakePixels(description.bmWidth, description.bmHeight);
    BITMAPINFO info = DescribeRows(pixels.width, pixels.height);
    HDC screen = GetDC(nullptr);
    const int rows = GetDIBits(screen, bitmap, 0, static_cast<UINT>(pixels.height), pixels.argb.data(), &info,
                               DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return rows == pixels.height ? pixels : Pixels{};
}

// The sums of the pixels that one output pixel covers.
struct Coverage {
    uint64_t area = 0;
    uint64_t alpha = 0;
    uint64_t red = 0, green = 0, blue = 0; // weighted by alpha

    void Add(uint32_t argb, uint64_t weight)
    {
        const uint64_t visible = weight * (argb >> 24);
        area += weight;
        alpha += visible;
        red += visible * (argb >> 16 & 0xFF);
        green += visible * (argb >> 8 & 0xFF);
        blue += visible * (argb & 0xFF);
    }
    uint32_t Average() const
    {
        if (alpha == 0)
            return 0;
        const auto rounded = [](uint64_t sum, uint64_t of) {
            return static_cast<uint32_t>((sum + of / 2) / of);
        };
        return rounded(alpha, area) << 24 | rounded(red, alpha) << 16 | rounded(green, alpha) << 8 |
               rounded(blue, alpha);
    }
};

// The stretch of one axis that a pixel of the result covers: in units of 1/to of a source pixel.
struct Span {
    int from;
    int to;

    // How much of source pixel i the pixel at of the result covers.
    uint64_t Overlap(int at, int i) const
    {
        const int begin = std::max(at * from, i * to);
        const int end = std::min((at + 1) * from, (i + 1) * to);
        return static_cast<uint64_t>(end - begin);
    }
    int First(int at) const { return at * from / to; }
    int Last(int at) const { return ((at + 1) * from - 1) / to; }
};

uint32_t AveragePixel(const Pixels& strip, int left, Span horizontal, Span vertical, int x, int y)
{
    Coverage sums;
    for (int row = vertical.First(y); row <= vertical.Last(y); ++row)
        for (int column = horizontal.First(x); column <= horizontal.Last(x); ++column)
            sums.Add(strip.At(left + column, row), horizontal.Overlap(x, column) * vertical.Overlap(y, row));
    return sums.Average();
}

UniqueBitmap CreateColorBitmap(const Pixels& pixels)
{
    const BITMAPINFO info = DescribeRows(pixels.width, pixels.height);
    void* bits = nullptr;
    UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap)
        std::copy(pixels.argb.begin(), pixels.argb.end(), static_cast<uint32_t*>(bits));
    return bitmap;
}

// What is drawn where alpha is not: an image without any visible pixel counts as one without alpha.
UniqueBitmap CreateMaskBitmap(const Pixels& pixels)
{
    const size_t stride = (static_cast<size_t>(pixels.width) + 15) / 16 * 2;
    std::vector<BYTE> bits(stride * static_cast<size_t>(pixels.height));
    for (int y = 0; y < pixels.height; ++y)
        for (int x = 0; x < pixels.width; ++x)
            if (pixels.At(x, y) >> 24 < kHalfAlpha)
                bits[static_cast<size_t>(y) * stride + static_cast<size_t>(x / 8)] |=
                    static_cast<BYTE>(0x80 >> x % 8);
    return UniqueBitmap(CreateBitmap(pixels.width, pixels.height, 1, 1, bits.data()));
}

} // namespace

Pixels MakePixels(int width, int height)
{
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide)
        return {};
    Pixels pixels{width, height, {}};
    pixels.argb.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    return pixels;
}

Pixels LoadPixels(HINSTANCE instance, int bitmapId, COLORREF mask)
{
    const UniqueBitmap bitmap(static_cast<HBITMAP>(
        LoadImageW(instance, MAKEINTRESOURCEW(bitmapId), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    Pixels pixels = ReadBitmap(bitmap.get());
    const uint32_t transparent = ToPixelColor(mask);
    for (uint32_t& pixel : pixels.argb)
        pixel = mask != CLR_NONE && (pixel & kColorBits) == transparent ? 0 : pixel | kOpaque;
    return pixels;
}

Pixels ScaleStrip(const Pixels& strip, int width, int newWidth, int newHeight)
{
    if (width <= 0 || strip.width < width)
        return {};
    const int count = strip.width / width;
    Pixels scaled = MakePixels(newWidth > kMaxSide / count ? 0 : newWidth * count, newHeight);
    if (scaled.IsEmpty())
        return {};
    const Span horizontal{width, newWidth};
    const Span vertical{strip.height, newHeight};
    for (int y = 0; y < newHeight; ++y)
        for (int x = 0; x < scaled.width; ++x)
            scaled.Set(x, y,
                       AveragePixel(strip, x / newWidth * width, horizontal, vertical, x % newWidth, y));
    return scaled;
}

Pixels LoadStrip(HINSTANCE instance, int bitmapId, int width, COLORREF mask, int dpi)
{
    const auto load = [&](const Drawing& drawing) {
        const Pixels strip = LoadPixels(instance, bitmapId + drawing.idOffset, mask);
        return ScaleStrip(strip, ScaleForDpi(width, drawing.dpi), ScaleForDpi(width, dpi),
                          MulDiv(strip.height, dpi, drawing.dpi));
    };
    for (const Drawing& drawing : kFinestFirst)
        if (dpi % drawing.dpi == 0)
            if (Pixels strip = load(drawing); !strip.IsEmpty())
                return strip;
    if (dpi >= kDoubleFrom)
        if (Pixels strip = load(kDouble); !strip.IsEmpty())
            return strip;
    return load(kGiven);
}

Pixels Greyed(const Pixels& pixels)
{
    Pixels greyed = pixels;
    for (uint32_t& pixel : greyed.argb) {
        const uint32_t grey =
            ((pixel >> 16 & 0xFF) * 299 + (pixel >> 8 & 0xFF) * 587 + (pixel & 0xFF) * 114) / 1000;
        const uint32_t alpha = ((pixel >> 24) + 1) / 2;
        pixel = alpha << 24 | grey << 16 | grey << 8 | grey;
    }
    return greyed;
}

Pixels CutLeft(const Pixels& pixels, int width)
{
    Pixels left = MakePixels(std::min(width, pixels.width), pixels.height);
    for (int y = 0; y < left.height; ++y)
        for (int x = 0; x < left.width; ++x)
            left.Set(x, y, pixels.At(x, y));
    return left;
}

Pixels InTheMiddle(const Pixels& pixels, int height)
{
    if (height <= pixels.height)
        return pixels;
    Pixels higher = MakePixels(pixels.width, height);
    const int above = (height - pixels.height) / 2;
    for (int y = 0; y < pixels.height && !higher.IsEmpty(); ++y)
        for (int x = 0; x < pixels.width; ++x)
            higher.Set(x, y + above, pixels.At(x, y));
    return higher;
}

HIMAGELIST CreateImageList(int width, int height)
{
    return ImageList_Create(width, height, ILC_COLOR32 | ILC_MASK, 0, 4);
}

int AppendToImageList(HIMAGELIST list, const Pixels& strip)
{
    const UniqueBitmap color = CreateColorBitmap(strip);
    const UniqueBitmap mask = CreateMaskBitmap(strip);
    return color && mask ? ImageList_Add(list, color.get(), mask.get()) : -1;
}
