#include "ui/window_scroll.h"

#include <gtest/gtest.h>

#include "support/test_windows.h"

namespace {

TEST(WindowScroll, GoesWhereTheBarPoints)
{
    EXPECT_EQ(ScrollTarget(SB_LINEDOWN, 0, 0, 100, 300, 24), 24);
    EXPECT_EQ(ScrollTarget(SB_LINEUP, 30, 0, 100, 300, 24), 6);
    EXPECT_EQ(ScrollTarget(SB_LINEUP, 10, 0, 100, 300, 24), 0);
    EXPECT_EQ(ScrollTarget(SB_PAGEDOWN, 50, 0, 100, 300, 24), 150);
    EXPECT_EQ(ScrollTarget(SB_PAGEDOWN, 150, 0, 100, 300, 24), 200);
    EXPECT_EQ(ScrollTarget(SB_PAGEUP, 150, 0, 100, 300, 24), 50);
    EXPECT_EQ(ScrollTarget(SB_THUMBTRACK, 0, 77, 100, 300, 24), 77);
    EXPECT_EQ(ScrollTarget(SB_TOP, 90, 0, 100, 300, 24), 0);
    EXPECT_EQ(ScrollTarget(SB_BOTTOM, 90, 0, 100, 300, 24), 200);
    EXPECT_EQ(ScrollTarget(SB_ENDSCROLL, 90, 5, 100, 300, 24), 90);
}

TEST(WindowScroll, StaysWhereAllIsSeen)
{
    EXPECT_EQ(ScrollTarget(SB_LINEDOWN, 0, 0, 300, 100, 24), 0);
}

TEST(WindowScroll, MovesNoFurtherThanNeeded)
{
    EXPECT_EQ(PositionToShow(10, 30, 0, 100), 0);
    EXPECT_EQ(PositionToShow(90, 130, 0, 100), 30);
    EXPECT_EQ(PositionToShow(10, 30, 20, 100), 10);
    EXPECT_EQ(PositionToShow(50, 250, 0, 100), 50); // higher than the page: its top
}

TEST(WindowScroll, AFocusedControlComesIntoSight)
{
    TestParent parent(nullptr, 300, 200);
    SetWindowLongPtrW(parent.Handle(), GWL_STYLE, GetWindowLongPtrW(parent.Handle(), GWL_STYLE) | WS_VSCROLL);
    RECT client{};
    GetClientRect(parent.Handle(), &client);
    HWND low = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, client.bottom + 50, 50, 20,
                               parent.Handle(), nullptr, nullptr, nullptr);
    WindowScroll scroll;
    scroll.SetExtent(parent.Handle(), client.bottom + 100, client.bottom);
    scroll.Reveal(parent.Handle(), low);
    EXPECT_EQ(scroll.Position(), 70);
    RECT rect{};
    GetWindowRect(low, &rect);
    MapWindowPoints(nullptr, parent.Handle(), reinterpret_cast<POINT*>(&rect), 2);
    EXPECT_EQ(rect.bottom, client.bottom);
}

TEST(WindowScroll, AcrossItMovesSideways)
{
    TestParent parent(nullptr, 300, 200);
    SetWindowLongPtrW(parent.Handle(), GWL_STYLE, GetWindowLongPtrW(parent.Handle(), GWL_STYLE) | WS_HSCROLL);
    RECT client{};
    GetClientRect(parent.Handle(), &client);
    HWND outside = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, client.right + 50, 10, 50, 20,
                                   parent.Handle(), nullptr, nullptr, nullptr);
    WindowScroll scroll(SB_HORZ);
    scroll.SetExtent(parent.Handle(), client.right + 130, client.right);
    scroll.Reveal(parent.Handle(), outside);
    EXPECT_EQ(scroll.Position(), 100);
    RECT rect{};
    GetWindowRect(outside, &rect);
    MapWindowPoints(nullptr, parent.Handle(), reinterpret_cast<POINT*>(&rect), 2);
    EXPECT_EQ(rect.right, client.right);
    EXPECT_EQ(rect.top, 10);
}

} // namespace
