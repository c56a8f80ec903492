#include "app/window_placement.h"

#include <gtest/gtest.h>

#include "app/journal_app.h"
#include "support/test_store.h"
#include "support/test_windows.h"
#include "ui/work_area.h"

namespace {

class Placement : public testing::Test {
  protected:
    void Store(LONG left, LONG top, LONG right, LONG bottom, DWORD maximized = 0)
    {
        App().SetNumber(L"Settings", L"wLeft", static_cast<DWORD>(left));
        App().SetNumber(L"Settings", L"wTop", static_cast<DWORD>(top));
        App().SetNumber(L"Settings", L"wRight", static_cast<DWORD>(right));
        App().SetNumber(L"Settings", L"wBottom", static_cast<DWORD>(bottom));
        App().SetNumber(L"Settings", L"wMax", maximized);
    }

    static RECT PlaceOf(HWND window)
    {
        RECT place;
        GetWindowRect(window, &place);
        return place;
    }

    TestRegistry m_registry;
    TestParent m_window;
};

TEST_F(Placement, OpensOverTheWorkAreaWhenNothingIsStored)
{
    ShowPlaced(m_window.Handle(), SW_SHOWNORMAL, App());
    EXPECT_TRUE(PumpUntil([&] {
        const RECT place = PlaceOf(m_window.Handle()), area = WorkArea();
        return EqualRect(&place, &area);
    }));
}

TEST_F(Placement, ComesBackWhereItWasLeft)
{
    SetWindowPos(m_window.Handle(), nullptr, 60, 70, 400, 300, SWP_NOZORDER);
    ASSERT_TRUE(PumpUntil([&] { return PlaceOf(m_window.Handle()).left == 60; }));
    SavePlacement(m_window.Handle(), App());
    SetWindowPos(m_window.Handle(), nullptr, 0, 0, 200, 200, SWP_NOZORDER);
    ShowPlaced(m_window.Handle(), SW_SHOWNORMAL, App());
    EXPECT_TRUE(PumpUntil([&] {
        const RECT place = PlaceOf(m_window.Handle()), wanted{60, 70, 460, 370};
        return EqualRect(&place, &wanted);
    }));
}

TEST_F(Placement, AMaximizedWindowComesBackMaximized)
{
    Store(50, 50, 450, 350, 1);
    ShowPlaced(m_window.Handle(), SW_SHOWNORMAL, App());
    EXPECT_TRUE(PumpUntil([&] { return IsZoomed(m_window.Handle()); }));
}

TEST_F(Placement, TheShowCommandStillCounts)
{
    Store(50, 50, 450, 350, 1);
    ShowPlaced(m_window.Handle(), SW_SHOWMINIMIZED, App());
    EXPECT_TRUE(PumpUntil([&] { return IsIconic(m_window.Handle()); }));
}

TEST_F(Placement, AMaximizedWindowKeepsItsRestoredPlace)
{
    SetWindowPos(m_window.Handle(), nullptr, 40, 30, 500, 320, SWP_NOZORDER);
    ASSERT_TRUE(PumpUntil([&] { return PlaceOf(m_window.Handle()).left == 40; }));
    ShowWindow(m_window.Handle(), SW_SHOWMAXIMIZED);
    ASSERT_TRUE(PumpUntil([&] { return IsZoomed(m_window.Handle()); }));
    SavePlacement(m_window.Handle(), App());
    EXPECT_EQ(App().GetNumber(L"Settings", L"wMax", 0), 1u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wLeft", 0), 40u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wRight", 0), 540u);
    EXPECT_EQ(App().GetNumber(L"Settings", L"wBottom", 0), 350u);
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
        ShowPlaced(m_window.Handle(), SW_SHOWNORMAL, App());
        EXPECT_TRUE(PumpUntil([&] {
            const RECT now = PlaceOf(m_window.Handle()), area = WorkArea();
            return EqualRect(&now, &area);
        })) << place.left
            << " " << place.top;
    }
}

TEST_F(Placement, TheFrameCanBeClosedMinimisedMaximisedAndResized)
{
    HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_VISIBLE, 0, 0, 200, 200, nullptr, nullptr, nullptr, nullptr);
    AddDesktopFrame(window);
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    EXPECT_EQ(style & WS_OVERLAPPEDWINDOW, WS_OVERLAPPEDWINDOW);
    DestroyWindow(window);
}

} // namespace
