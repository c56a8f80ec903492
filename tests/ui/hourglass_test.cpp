#include "ui/hourglass.h"

#include <gtest/gtest.h>

#include "support/test_windows.h"

namespace {

TEST(Hourglass, IsTheSystemsAndGoes)
{
    ShowHourglass();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    RemoveHourglass();
    EXPECT_EQ(GetCursor(), nullptr);
}

// The mouse need not be moved for it.
TEST(Hourglass, AWindowBelowTheMouseHasItsPointerBackAfterIt)
{
    const TestParent parent([](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT* result) {
        if (message != WM_SETCURSOR)
            return false;
        EXPECT_EQ(LOWORD(lParam), HTCLIENT);
        SetCursor(LoadCursorW(nullptr, IDC_ARROW));
        *result = TRUE;
        return true;
    });
    RECT place{};
    GetWindowRect(parent.Handle(), &place);
    POINT before{};
    GetCursorPos(&before);
    SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    ASSERT_TRUE(PumpUntil([&] {
        POINT mouse{};
        return GetCursorPos(&mouse) && WindowFromPoint(mouse) == parent.Handle();
    }));
    ShowHourglass();
    RemoveHourglass();
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
    SetCursorPos(before.x, before.y);
}

TEST(Hourglass, GoesWithItsScope)
{
    {
        const ScopedHourglass work;
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    }
    EXPECT_EQ(GetCursor(), nullptr);
}

} // namespace
