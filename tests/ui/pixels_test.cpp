#include "ui/pictures/pixels.h"

#include <gtest/gtest.h>

#include "ui/pictures/image_list.h"
#include "ui/pictures/standard_images.h"
#include "ui/ui_test_resource.h"
#include "util/owners.h"

namespace {

constexpr uint32_t kRed = 0xFFFF0000;
constexpr uint32_t kGreen = 0xFF00FF00;
constexpr uint32_t kBlue = 0xFF0000FF;
constexpr uint32_t kClear = 0;

Pixels Make(int width, int height, std::vector<uint32_t> argb)
{
    Pixels pixels = MakePixels(width, height);
    pixels.argb = std::move(argb);
    return pixels;
}

HINSTANCE Instance()
{
    return GetModuleHandleW(nullptr);
}

} // namespace

TEST(Pixels, SameSizeChangesNothing)
{
    const Pixels strip = Make(4, 2, {kRed, kClear, kBlue, kGreen, kClear, kRed, 0x80123456, kBlue});
    EXPECT_EQ(ScaleStrip(strip, 2, 2, 2).argb, strip.argb);
}

TEST(Pixels, GreyedLosesColourAndHalfItsStrength)
{
    EXPECT_EQ(Greyed(Make(3, 2, {kRed, kGreen, kBlue, kClear, 0xFFFFFFFF, 0x80FF0000})).argb,
              (std::vector<uint32_t>{0x804C4C4C, 0x80959595, 0x801D1D1D, kClear, 0x80FFFFFF, 0x404C4C4C}));
}

TEST(Pixels, WholeFactorMakesSquaresOfPixels)
{
    const Pixels scaled = ScaleStrip(Make(2, 1, {kRed, kBlue}), 2, 6, 3);
    ASSERT_EQ(scaled.width, 6);
    ASSERT_EQ(scaled.height, 3);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(scaled.At(x, y), x < 3 ? kRed : kBlue) << x << "," << y;
}

TEST(Pixels, OtherFactorAveragesWhatAPixelCovers)
{
    // 2 to 3: the middle one covers half of each.
    const Pixels scaled = ScaleStrip(Make(2, 1, {kRed, kBlue}), 2, 3, 1);
    EXPECT_EQ(scaled.argb, (std::vector<uint32_t>{kRed, 0xFF800080, kBlue}));
}

TEST(Pixels, TransparentNeighbourLendsNoColour)
{
    // Whatever colour lies behind the transparent pixel, the shared one is half clear red.
    const Pixels scaled = ScaleStrip(Make(2, 1, {kRed, 0x00C0C0C0}), 2, 3, 1);
    EXPECT_EQ(scaled.argb, (std::vector<uint32_t>{kRed, 0x80FF0000, kClear}));
}

TEST(Pixels, ImagesOfAStripDoNotRunIntoEachOther)
{
    const Pixels scaled = ScaleStrip(Make(4, 1, {kRed, kRed, kBlue, kBlue}), 2, 3, 1);
    EXPECT_EQ(scaled.argb, (std::vector<uint32_t>{kRed, kRed, kRed, kBlue, kBlue, kBlue}));
}

TEST(Pixels, ScaledDownIsTheAverage)
{
    const Pixels scaled = ScaleStrip(Make(2, 2, {kRed, kRed, kClear, kClear}), 2, 1, 1);
    EXPECT_EQ(scaled.argb, (std::vector<uint32_t>{0x80FF0000}));
}

TEST(Pixels, ImpossibleSizesGiveNothing)
{
    const Pixels strip = Make(2, 1, {kRed, kBlue});
    EXPECT_TRUE(ScaleStrip(strip, 0, 2, 1).IsEmpty());
    EXPECT_TRUE(ScaleStrip(strip, 3, 3, 1).IsEmpty()); // not even one image
    EXPECT_TRUE(ScaleStrip(strip, 2, 0, 1).IsEmpty());
    EXPECT_TRUE(ScaleStrip(strip, 1, 0x40000000, 1).IsEmpty());
    EXPECT_TRUE(ScaleStrip({}, 1, 1, 1).IsEmpty());
    EXPECT_TRUE(MakePixels(-1, 5).IsEmpty());
    EXPECT_TRUE(MakePixels(5, 0).IsEmpty());
}

TEST(Pixels, MasksColourIsTransparent)
{
    const Pixels strip = LoadPixels(Instance(), TEST_STRIP, RGB(0xC0, 0xC0, 0xC0));
    ASSERT_EQ(strip.width, 4);
    ASSERT_EQ(strip.height, 2);
    EXPECT_EQ(strip.argb, (std::vector<uint32_t>{kRed, kClear, kClear, kClear, //
                                                 kClear, kRed, kClear, kClear}));
}

TEST(Pixels, WithoutMaskAllIsOpaque)
{
    const Pixels strip = LoadPixels(Instance(), TEST_STRIP, CLR_NONE);
    ASSERT_EQ(strip.argb.size(), 8u);
    EXPECT_EQ(strip.At(0, 0), kRed);
    EXPECT_EQ(strip.At(1, 0), 0xFFC0C0C0u);
}

TEST(Pixels, MissingBitmapIsEmpty)
{
    EXPECT_TRUE(LoadPixels(Instance(), 9999, CLR_NONE).IsEmpty());
    EXPECT_TRUE(LoadStrip(Instance(), 9999, 2, CLR_NONE, 96).IsEmpty());
    EXPECT_TRUE(LoadStrip(Instance(), 9999, 2, CLR_NONE, 192).IsEmpty());
}

TEST(Pixels, StripComesAtItsResolution)
{
    for (const int dpi : {96, 120, 144, 192, 288}) {
        const Pixels strip = LoadStrip(Instance(), TEST_STRIP, 2, RGB(0xC0, 0xC0, 0xC0), dpi);
        const int side = dpi == 120 ? 3 : 2 * dpi / 96; // 2.5 rounds up
        EXPECT_EQ(strip.width, 2 * side) << dpi;
        EXPECT_EQ(strip.height, side) << dpi;
    }
}

TEST(Pixels, ImagesOfDoubleSizeServeFrom144Dpi)
{
    EXPECT_EQ(LoadStrip(Instance(), TEST_STRIP, 2, CLR_NONE, 120).At(0, 0), kRed);
    EXPECT_EQ(LoadStrip(Instance(), TEST_STRIP, 2, CLR_NONE, 144).At(0, 0), kGreen);
    EXPECT_EQ(LoadStrip(Instance(), TEST_STRIP, 2, CLR_NONE, 192).At(0, 0), kGreen);
    // Without them the small ones are enlarged.
    EXPECT_EQ(LoadStrip(Instance(), TEST_STRIP_2X, 2, CLR_NONE, 192).At(0, 0), kGreen);
}

TEST(Pixels, CutLeftKeepsTheLeftmostColumns)
{
    const Pixels cut = CutLeft(Make(3, 2, {kRed, kGreen, kBlue, kBlue, kRed, kGreen}), 2);
    EXPECT_EQ(cut.width, 2);
    EXPECT_EQ(cut.argb, (std::vector<uint32_t>{kRed, kGreen, kBlue, kRed}));
}

// Each size has its own drawing: nothing is averaged, so that every pixel has a colour that was drawn, or
// none.
TEST(Pixels, ImagesAreDrawnForEveryUsualResolution)
{
    const std::pair<int, int> strips[] = {{201, 12}, {210, 12}, {211, 12}, {212, 16},
                                          {213, 16}, {214, 16}, {215, 16}};
    const std::pair<int, int> drawings[] = {{96, 0},     {120, 2000}, {144, 3000},
                                            {192, 1000}, {240, 4000}, {288, 5000}};
    for (const auto& [id, width] : strips)
        for (const auto& [dpi, offset] : drawings) {
            const Pixels drawn = LoadPixels(Instance(), id + offset, kImageMask);
            EXPECT_EQ(drawn.height, width * dpi / 96) << id << " at " << dpi;
            EXPECT_EQ(LoadStrip(Instance(), id, width, kImageMask, dpi).argb, drawn.argb)
                << id << " at " << dpi;
        }
    // At whole multiples each pixel becomes a square.
    EXPECT_EQ(LoadStrip(Instance(), 214, 16, kImageMask, 384).argb,
              ScaleStrip(LoadPixels(Instance(), 1214, kImageMask), 32, 64, 64).argb);
    EXPECT_EQ(LoadStrip(Instance(), 214, 16, kImageMask, 360).argb,
              ScaleStrip(LoadPixels(Instance(), 2214, kImageMask), 20, 60, 60).argb);
}

// One image of a strip.
std::vector<uint32_t> ImageAt(const Pixels& strip, int index)
{
    std::vector<uint32_t> image;
    for (int y = 0; y < strip.height; ++y)
        for (int x = 0; x < strip.height; ++x)
            image.push_back(strip.At(index * strip.height + x, y));
    return image;
}

// At 96 dpi the system's, which would be blurred at any other.
TEST(Pixels, StandardImagesOfTheButtonsAreDrawnForEveryUsualResolution)
{
    const std::pair<int, int> shown[] = {
        {STD_CUT, 0}, {STD_COPY, 1}, {STD_PASTE, 2}, {STD_DELETE, 3}, {STD_FIND, 4}};
    for (const auto& [dpi, bitmap] : std::initializer_list<std::pair<int, int>>{
             {120, 2216}, {144, 3216}, {192, 1216}, {240, 4216}, {288, 5216}}) {
        const Pixels images = LoadStandardImages(dpi), drawn = LoadPixels(Instance(), bitmap, kImageMask);
        ASSERT_EQ(images.height, dpi / 6);
        ASSERT_EQ(drawn.width, 5 * images.height);
        for (const auto& [image, place] : shown)
            EXPECT_EQ(ImageAt(images, image), ImageAt(drawn, place)) << dpi << ", " << image;
    }
}

TEST(Pixels, DeleteIsTheBinAtTheSystemsOwnResolutionToo)
{
    const Pixels images = LoadStandardImages(96), drawn = LoadPixels(Instance(), 216, kImageMask);
    ASSERT_EQ(drawn.width, 5 * kStandardImageSide);
    EXPECT_EQ(ImageAt(images, STD_DELETE), ImageAt(drawn, 3));
    for (const auto& [image, place] : {std::pair(STD_CUT, 0), {STD_COPY, 1}, {STD_PASTE, 2}, {STD_FIND, 4}})
        EXPECT_NE(ImageAt(images, image), ImageAt(drawn, place)) << image;
}

TEST(Pixels, InTheMiddleLeavesClearRowsAboveAndBelow)
{
    const Pixels higher = InTheMiddle(Make(2, 1, {kRed, kBlue}), 4);
    EXPECT_EQ(higher.width, 2);
    EXPECT_EQ(higher.argb,
              (std::vector<uint32_t>{kClear, kClear, kRed, kBlue, kClear, kClear, kClear, kClear}));
    EXPECT_EQ(InTheMiddle(Make(1, 2, {kRed, kBlue}), 1).argb, (std::vector<uint32_t>{kRed, kBlue}));
    EXPECT_TRUE(InTheMiddle({}, 3).IsEmpty());
}

TEST(Pixels, SystemHasItsStandardImages)
{
    const Pixels images = LoadStandardImages(96);
    ASSERT_EQ(images.height, kStandardImageSide);
    ASSERT_GE(images.width, (STD_PRINT + 1) * kStandardImageSide);
    for (const int image : {STD_CUT, STD_COPY, STD_PASTE, STD_DELETE, STD_FIND}) {
        bool hasVisible = false;
        bool hasClear = false;
        for (int y = 0; y < kStandardImageSide; ++y)
            for (int x = 0; x < kStandardImageSide; ++x)
                (images.At(image * kStandardImageSide + x, y) >> 24 ? hasVisible : hasClear) = true;
        EXPECT_TRUE(hasVisible) << image;
        EXPECT_TRUE(hasClear) << image;
    }
}
