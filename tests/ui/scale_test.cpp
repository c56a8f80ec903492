#include "ui/scale.h"

#include <windows.h>

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

// What the session was started with.
int SessionDpi()
{
    wchar_t text[16];
    return GetEnvironmentVariableW(L"SESSION_DPI", text, 16) ? _wtoi(text) : 96;
}

} // namespace

TEST(Scale, ResolutionIsTheSystems)
{
    EXPECT_EQ(SystemDpi(), SessionDpi());
}

TEST(Scale, ConstantsAreTheirOwnAt96Dpi)
{
    for (const int pixels : {0, 1, 21, 22, 86, 143, 324, 1000})
        EXPECT_EQ(ScaleForDpi(pixels, 96), pixels);
}

TEST(Scale, RoundsToTheNearestPixel)
{
    EXPECT_EQ(ScaleForDpi(100, 120), 125);
    EXPECT_EQ(ScaleForDpi(1, 120), 1);    // 1.25
    EXPECT_EQ(ScaleForDpi(3, 120), 4);    // 3.75
    EXPECT_EQ(ScaleForDpi(86, 120), 108); // 107.5
    EXPECT_EQ(ScaleForDpi(21, 144), 32);  // 31.5
    EXPECT_EQ(ScaleForDpi(22, 144), 33);
    EXPECT_EQ(ScaleForDpi(86, 192), 172);
}

TEST(Scale, NegativeConstantsScaleLikePositiveOnes)
{
    EXPECT_EQ(ScaleForDpi(-12, 144), -18);
    EXPECT_EQ(ScaleForDpi(-9, 120), -11); // 11.25
}

TEST(Scale, UsesTheSystemsResolution)
{
    EXPECT_EQ(Scale(155), ScaleForDpi(155, SystemDpi()));
    EXPECT_EQ(Scale(96), SystemDpi());
}
