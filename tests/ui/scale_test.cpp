#include "ui/screen/scale.h"

#include <windows.h>

#include <cstdlib>

#include <gtest/gtest.h>

#include "support/test_windows.h"

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

TEST(Scale, AWindowHasTheSystemsResolutionUntilItIsToldAnother)
{
    const TestParent parent;
    HWND child = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, parent.Handle(), nullptr, nullptr,
                                 nullptr);
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(DpiOf(nullptr), SystemDpi());
    EXPECT_EQ(DpiOf(child), SystemDpi());
    const int other = 2 * SystemDpi();
    mervane::NoteDpi(parent.Handle(), MAKEWPARAM(other, other));
    EXPECT_EQ(DpiOf(parent.Handle()), other);
    EXPECT_EQ(DpiOf(child), other) << "it lies in the window that was told";
    EXPECT_EQ(DpiOf(GetDesktopWindow()), SystemDpi());
    EXPECT_EQ(Scale(child, 155), ScaleForDpi(155, other));
    EXPECT_NEAR(MetricOf(child, SM_CXVSCROLL), 2 * MetricOf(nullptr, SM_CXVSCROLL), 1);
    mervane::NoteDpi(parent.Handle(), 0);
    EXPECT_EQ(DpiOf(child), other) << "no resolution at all is none";
    mervane::ForgetDpi(parent.Handle());
    EXPECT_EQ(DpiOf(child), SystemDpi());
}

TEST(Scale, StoredWidthsArePixelsAtTheSystemsResolution)
{
    const TestParent parent;
    for (const int width : {0, 1, 16, 155, 4095}) {
        EXPECT_EQ(SeenWidth(parent.Handle(), width), width);
        EXPECT_EQ(StoredWidth(parent.Handle(), width), width);
    }
    const int larger = SystemDpi() * 3 / 2;
    mervane::NoteDpi(parent.Handle(), MAKEWPARAM(larger, larger));
    EXPECT_EQ(SeenWidth(parent.Handle(), 100), 150);
    EXPECT_EQ(StoredWidth(parent.Handle(), 150), 100);
    for (int width = 0; width < 4096; ++width)
        EXPECT_EQ(StoredWidth(parent.Handle(), SeenWidth(parent.Handle(), width)), width);
    mervane::ForgetDpi(parent.Handle());
}
