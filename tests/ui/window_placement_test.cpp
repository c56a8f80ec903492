#include "settings/window_placement.h"

#include <gtest/gtest.h>

#include "support/test_session.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/screen/work_area.h"

namespace {

RECT PlaceToOpenAt()
{
    const std::optional<WindowPlace> stored = LoadPlacement(Own());
    return stored ? stored->rect : WorkArea();
}

class Placement : public testing::Test {
  protected:
    void Store(LONG left, LONG top, LONG right, LONG bottom, DWORD maximized = 0)
    {
        Own().SetNumber(L"Settings", L"wLeft", static_cast<DWORD>(left));
        Own().SetNumber(L"Settings", L"wTop", static_cast<DWORD>(top));
        Own().SetNumber(L"Settings", L"wRight", static_cast<DWORD>(right));
        Own().SetNumber(L"Settings", L"wBottom", static_cast<DWORD>(bottom));
        Own().SetNumber(L"Settings", L"wMax", maximized);
    }

    TestRegistry m_registry;
    TestParent m_window;
};

TEST_F(Placement, OpensOverTheWorkAreaWhenNothingIsStored)
{
    const RECT place = PlaceToOpenAt(), area = WorkArea();
    EXPECT_TRUE(EqualRect(&place, &area));
}

TEST_F(Placement, OpensWhereItWasStored)
{
    Store(60, 70, 460, 370);
    const RECT place = PlaceToOpenAt(), wanted{60, 70, 460, 370};
    EXPECT_TRUE(EqualRect(&place, &wanted));
}

// The screen was larger when the place was stored.
TEST_F(Placement, IsNoLargerThanTheWorkArea)
{
    const RECT area = WorkArea();
    Store(10, 20, area.right + 500, 220);
    RECT place = PlaceToOpenAt(), wanted{area.left, 20, area.right, 220};
    EXPECT_TRUE(EqualRect(&place, &wanted)) << place.left << " " << place.right;
    Store(10, 20, 400, area.bottom + 300);
    place = PlaceToOpenAt();
    wanted = {10, area.top, 400, area.bottom};
    EXPECT_TRUE(EqualRect(&place, &wanted)) << place.top << " " << place.bottom;
    Store(area.right - 100, 20, area.right + 300, 220); // partly off the screen, as somebody left it
    place = PlaceToOpenAt();
    wanted = {area.right - 100, 20, area.right + 300, 220};
    EXPECT_TRUE(EqualRect(&place, &wanted)) << place.left << " " << place.right;
}

// At 96 dpi Windows leaves 7 pixels of the frame clear, and none at the top.
TEST_F(Placement, WhatIsSeenOfTheFrameFillsTheArea)
{
    const RECT place = PlaceToFill({0, 40, 1920, 1040}, 7), wanted{-7, 40, 1927, 1047};
    EXPECT_TRUE(EqualRect(&place, &wanted));
    const RECT whole = PlaceToFill({-1280, 0, 0, 1024}, 0), area{-1280, 0, 0, 1024};
    EXPECT_TRUE(EqualRect(&whole, &area));
    EXPECT_EQ(ClearFrame(m_window.Handle()), 0) << "Wine's frames are seen whole";
}

// A window that is shown for the first time: what a window manager makes of one that is minimised, restored
// and minimised again comes whenever it comes.
class FirstShow : public Placement {
  protected:
    WINDOWPLACEMENT Show(int command, DWORD leftMaximized)
    {
        Store(50, 50, 450, 350, leftMaximized);
        m_first = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 200, 200, nullptr, nullptr, nullptr, nullptr);
        ShowAsLeft(m_first, command, FrameAndPlace(m_first, Own()));
        WINDOWPLACEMENT placement{};
        placement.length = sizeof placement;
        EXPECT_TRUE(GetWindowPlacement(m_first, &placement));
        return placement;
    }
    // What is stored of it when it is closed.
    DWORD Close()
    {
        SavePlacement(m_first, Own());
        DestroyWindow(m_first);
        return Own().GetNumber(L"Settings", L"wMax", 9);
    }

    HWND m_first = nullptr;
};

TEST_F(FirstShow, OfAMaximizedWindowIsMaximized)
{
    for (const int command : {SW_SHOWNORMAL, SW_SHOW, SW_SHOWDEFAULT, SW_RESTORE}) {
        EXPECT_EQ(Show(command, 1).showCmd, static_cast<UINT>(SW_SHOWMAXIMIZED)) << command;
        EXPECT_EQ(Close(), 1u);
        EXPECT_EQ(Show(command, 0).showCmd, static_cast<UINT>(SW_SHOWNORMAL)) << command;
        EXPECT_EQ(Close(), 0u);
    }
}

TEST_F(FirstShow, IsAsTheShowCommandSays)
{
    EXPECT_EQ(Show(SW_SHOWMAXIMIZED, 0).showCmd, static_cast<UINT>(SW_SHOWMAXIMIZED));
    EXPECT_EQ(Close(), 1u);
    Show(SW_HIDE, 1);
    EXPECT_FALSE(IsWindowVisible(m_first));
    DestroyWindow(m_first);
    Show(SW_SHOWNOACTIVATE, 1);
    EXPECT_FALSE(IsZoomed(m_first));
    DestroyWindow(m_first);
}

TEST_F(FirstShow, ThatIsMinimizedForgetsNoMaximizedWindow)
{
    for (const int command : {SW_SHOWMINIMIZED, SW_MINIMIZE, SW_SHOWMINNOACTIVE})
        for (const DWORD leftMaximized : {1u, 0u}) {
            const WINDOWPLACEMENT placement = Show(command, leftMaximized);
            EXPECT_EQ(placement.showCmd, static_cast<UINT>(SW_SHOWMINIMIZED)) << command;
            EXPECT_EQ((placement.flags & WPF_RESTORETOMAXIMIZED) != 0, leftMaximized == 1) << command;
            EXPECT_EQ(Close(), leftMaximized) << command;
        }
}

TEST_F(Placement, AMaximizedWindowIsStoredAsOne)
{
    ShowWindow(m_window.Handle(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(PumpUntil([&] { return IsZoomed(m_window.Handle()); }));
    SavePlacement(m_window.Handle(), Own());
    EXPECT_EQ(Own().GetNumber(L"Settings", L"wMax", 0), 1u);
}

TEST_F(Placement, PlacesThatCannotBeReachedAreNotTaken)
{
    const RECT useless[] = {
        {5000, 5000, 5400, 5300}, // right of every screen
        {-900, 100, -500, 400},   // left of every screen
        {100, -500, 500, -100},   // above every screen
        {100, 100, 90, 400},      // turned over
        {100, 100, 110, 105},     // nothing to hold on to
        {LONG_MIN, LONG_MIN, LONG_MAX, LONG_MAX},
    };
    for (const RECT& place : useless) {
        Store(place.left, place.top, place.right, place.bottom);
        const RECT now = PlaceToOpenAt(), area = WorkArea();
        EXPECT_TRUE(EqualRect(&now, &area)) << place.left << " " << place.top;
    }
}

TEST_F(Placement, AMaximizedWindowWhosePlaceIsGoneOpensOverTheWorkArea)
{
    Store(5000, 5000, 5400, 5300, 1);
    EXPECT_FALSE(FrameAndPlace(m_window.Handle(), Own()));
    RECT place;
    GetWindowRect(m_window.Handle(), &place);
    const RECT area = WorkArea();
    EXPECT_TRUE(EqualRect(&place, &area));
}

TEST_F(Placement, TheFrameCanBeClosedMinimisedMaximisedAndResized)
{
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_VISIBLE, 0, 0, 200, 200, nullptr, nullptr, nullptr, nullptr);
    Store(60, 70, 460, 370);
    EXPECT_FALSE(FrameAndPlace(window, Own()));
    RECT place;
    GetWindowRect(window, &place);
    const RECT wanted{60, 70, 460, 370};
    EXPECT_TRUE(EqualRect(&place, &wanted));
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    EXPECT_EQ(style & WS_OVERLAPPEDWINDOW, WS_OVERLAPPEDWINDOW);
    EXPECT_NE(style & WS_CLIPCHILDREN, 0) << "its own background would flicker behind its contents";
    DestroyWindow(window);
}

} // namespace
