#include "ui/pictures/image_list.h"

#include <set>

#include <gtest/gtest.h>

#include "ui/pictures/canvas.h"
#include "ui/screen/scale.h"
#include "ui/ui_test_resource.h"

namespace {

constexpr COLORREF kBackground = RGB(0x20, 0x40, 0x80);
constexpr uint32_t kColorBits = 0x00FFFFFF;
constexpr uint32_t kBackgroundPixel = 0x204080;

UniqueImageList Load(COLORREF mask)
{
    return LoadImageStrip(GetModuleHandleW(nullptr), TEST_STRIP, 2, mask, SystemDpi());
}

// The colours that an image has on the screen, as 0xRRGGBB.
std::vector<uint32_t> Draw(HIMAGELIST list, int image)
{
    const Canvas canvas(Scale(2), Scale(2), kBackground);
    ImageList_Draw(list, image, canvas.Dc(), 0, 0, ILD_NORMAL);
    std::vector<uint32_t> colors = canvas.Read().argb;
    for (uint32_t& color : colors)
        color &= kColorBits;
    return colors;
}

} // namespace

TEST(ImageList, HasTheStripsImagesAtTheSystemsResolution)
{
    const UniqueImageList list = Load(kImageMask);
    ASSERT_TRUE(list);
    EXPECT_EQ(ImageList_GetImageCount(list.get()), 2);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(list.get(), &width, &height);
    EXPECT_EQ(width, Scale(2));
    EXPECT_EQ(height, Scale(2));
}

TEST(ImageList, MaskIsNotDrawn)
{
    const UniqueImageList list = Load(kImageMask);
    ASSERT_TRUE(list);
    const std::vector<uint32_t> pixels = Draw(list.get(), 0);
    const uint32_t drawn = SystemDpi() >= 144 ? 0x00FF00 : 0xFF0000;
    EXPECT_EQ(pixels.front(), drawn);
    EXPECT_EQ(pixels[static_cast<size_t>(Scale(2)) - 1], kBackgroundPixel);
    EXPECT_EQ(pixels.back(), drawn);
}

// At any resolution a pixel is the image's, the background's, or a mixture of the two: never of the mask's
// grey.
TEST(ImageList, MaskLeavesNoFringe)
{
    const UniqueImageList list = Load(kImageMask);
    ASSERT_TRUE(list);
    const bool isGreen = SystemDpi() >= 144;
    for (const uint32_t pixel : Draw(list.get(), 0)) {
        const int red = static_cast<int>(pixel >> 16 & 0xFF);
        const int green = static_cast<int>(pixel >> 8 & 0xFF);
        const int blue = static_cast<int>(pixel & 0xFF);
        const int share = 128 - blue; // of the image, in 128ths: it has no blue
        EXPECT_NEAR(red, 0x20 + share * ((isGreen ? 0 : 255) - 0x20) / 128, 2);
        EXPECT_NEAR(green, 0x40 + share * ((isGreen ? 255 : 0) - 0x40) / 128, 2);
    }
}

TEST(ImageList, ImageOfNothingButMaskDrawsNothing)
{
    const UniqueImageList list = Load(kImageMask);
    ASSERT_TRUE(list);
    for (const uint32_t pixel : Draw(list.get(), 1))
        EXPECT_EQ(pixel, kBackgroundPixel);
}

TEST(ImageList, WithoutMaskAllIsDrawn)
{
    const UniqueImageList list = Load(CLR_NONE);
    ASSERT_TRUE(list);
    for (const uint32_t pixel : Draw(list.get(), 1))
        EXPECT_EQ(pixel, 0xC0C0C0u);
}

// The colour's own brightness, half of it over half of the background.
TEST(ImageList, GreyedImagesHaveNoColourOfTheirOwn)
{
    const UniqueImageList list =
        LoadGreyedImageStrip(GetModuleHandleW(nullptr), TEST_STRIP, 2, kImageMask, SystemDpi());
    ASSERT_TRUE(list);
    EXPECT_EQ(ImageList_GetImageCount(list.get()), 2);
    const std::vector<uint32_t> pixels = Draw(list.get(), 0);
    const int grey = SystemDpi() >= 144 ? 149 : 76; // of pure green, of pure red
    EXPECT_NEAR(static_cast<int>(pixels.front() >> 16 & 0xFF), (grey + 0x20) / 2, 2);
    EXPECT_NEAR(static_cast<int>(pixels.front() >> 8 & 0xFF), (grey + 0x40) / 2, 2);
    EXPECT_NEAR(static_cast<int>(pixels.front() & 0xFF), (grey + 0x80) / 2, 2);
    EXPECT_EQ(pixels[static_cast<size_t>(Scale(2)) - 1], kBackgroundPixel);
    for (const uint32_t pixel : Draw(list.get(), 1))
        EXPECT_EQ(pixel, kBackgroundPixel);
}

TEST(ImageList, MissingResourceGivesNone)
{
    EXPECT_FALSE(LoadGreyedImageStrip(GetModuleHandleW(nullptr), 9999, 16, kImageMask, SystemDpi()));
    EXPECT_FALSE(LoadImageStrip(GetModuleHandleW(nullptr), 9999, 16, kImageMask, SystemDpi()));
    EXPECT_FALSE(LoadImageStrip(GetModuleHandleW(nullptr), TEST_STRIP, 0, kImageMask, SystemDpi()));
    EXPECT_FALSE(LoadImageStrip(GetModuleHandleW(nullptr), TEST_STRIP, 64, kImageMask, SystemDpi()));
}
