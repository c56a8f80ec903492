#include "ui/screen/scoped.h"

#include <gtest/gtest.h>

#include "support/test_windows.h"
#include "ui/pictures/canvas.h"

TEST(Scoped, RedrawPausePaintsOnceAtTheEnd)
{
    int paints = 0;
    TestParent parent([&paints](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        paints += message == WM_PAINT;
        return false;
    });
    UpdateWindow(parent.Handle());
    PumpMessages();
    paints = 0;
    {
        const ScopedRedrawPause pause(parent.Handle());
        InvalidateRect(parent.Handle(), nullptr, TRUE);
        UpdateWindow(parent.Handle());
        EXPECT_EQ(paints, 0);
    }
    EXPECT_TRUE(IsWindowVisible(parent.Handle()));
    UpdateWindow(parent.Handle());
    EXPECT_EQ(paints, 1);
}

TEST(Scoped, SelectedObjectComesOutAgain)
{
    const Canvas canvas(4, 4, RGB(0, 0, 0));
    HGDIOBJ before = GetCurrentObject(canvas.Dc(), OBJ_BRUSH);
    HGDIOBJ other = GetStockObject(BLACK_BRUSH);
    ASSERT_NE(before, other);
    {
        const ScopedSelectObject selected(canvas.Dc(), other);
        EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_BRUSH), other);
    }
    EXPECT_EQ(GetCurrentObject(canvas.Dc(), OBJ_BRUSH), before);
}
