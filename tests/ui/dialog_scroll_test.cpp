// A dialog that is larger than its work area.
#include <cstdlib>
#include <functional>

#include <gtest/gtest.h>

#include "support/dialog_window.h"
#include "support/resolution.h"
#include "support/work_area_setting.h"
#include "ui/dialog_fixture.h"
#include "ui/screen/scale.h"

namespace {

SIZE WindowSize(HWND window)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

SIZE ClientSize(HWND window)
{
    RECT rect{};
    GetClientRect(window, &rect);
    return {rect.right, rect.bottom};
}

SCROLLINFO Scrolled(HWND window, int bar)
{
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    GetScrollInfo(window, bar, &info);
    return info;
}

bool HasBar(HWND window, LONG_PTR style)
{
    return (GetWindowLongPtrW(window, GWL_STYLE) & style) != 0;
}

bool IsSeen(HWND window, int id)
{
    const RECT place = DialogWindow(window).Rect(id);
    const SIZE inside = ClientSize(window);
    return place.left >= 0 && place.top >= 0 && place.right <= inside.cx && place.bottom <= inside.cy;
}

// The bars say so much of this content, and what is seen of it.
void ExpectExtents(HWND window, const SIZE& content)
{
    const SIZE inside = ClientSize(window);
    const SCROLLINFO down = Scrolled(window, SB_VERT), across = Scrolled(window, SB_HORZ);
    EXPECT_NEAR(down.nMax + 1, content.cy, 2);
    EXPECT_NEAR(across.nMax + 1, content.cx, 2);
    EXPECT_EQ(static_cast<LONG>(down.nPage), inside.cy);
    EXPECT_EQ(static_cast<LONG>(across.nPage), inside.cx);
}

// A window manager may be late with a place that the window had before.
void ExpectWithin(HWND window, const RECT& area)
{
    RECT place{};
    EXPECT_TRUE(PumpUntil([&] {
        RECT seen{};
        GetWindowRect(window, &place);
        IntersectRect(&seen, &place, &area);
        return EqualRect(&seen, &place) != FALSE;
    })) << place.left
        << "," << place.top << "," << place.right << "," << place.bottom;
}

// As late as with a place.
void ExpectClientSize(HWND window, const SIZE& size)
{
    EXPECT_TRUE(PumpUntil([&] {
        const SIZE now = ClientSize(window);
        return std::abs(now.cx - size.cx) <= 2 && std::abs(now.cy - size.cy) <= 2;
    })) << ClientSize(window).cx
        << "," << ClientSize(window).cy;
}

// Less than the dialog needs in both directions, and the same in each resolution.
RECT SmallArea(HWND window)
{
    return {10, 20, 10 + Scale(window, 160), 20 + Scale(window, 110)};
}

// Over the dialog of the template, shown.
class DialogScrollTest : public testing::Test {
  protected:
    void Run(const std::function<void(HWND)>& action)
    {
        RunDialog(m_dialog, [&](HWND window) {
            ShowWindow(window, SW_SHOW);
            m_whole = WindowSize(window);
            m_content = ClientSize(window);
            action(window);
            SendMessageW(window, WM_CLOSE, 0, 0);
        });
    }

    TestDialog m_dialog;
    SIZE m_whole{};
    SIZE m_content{};
};

TEST_F(DialogScrollTest, WithRoomEnoughThereIsNoBar)
{
    Run([&](HWND window) {
        SendMessageW(window, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0);
        EXPECT_FALSE(HasBar(window, WS_VSCROLL));
        EXPECT_FALSE(HasBar(window, WS_HSCROLL));
        EXPECT_EQ(WindowSize(window).cx, m_whole.cx);
        EXPECT_EQ(WindowSize(window).cy, m_whole.cy);
        SendMessageW(window, WM_VSCROLL, SB_LINEDOWN, 0);
        EXPECT_TRUE(IsSeen(window, ITEM_EDIT));
    });
}

TEST_F(DialogScrollTest, ASmallerWorkAreaBringsBarsAndALargerOneTakesThem)
{
    Run([&](HWND window) {
        const RECT edit = DialogWindow(window).Rect(ITEM_EDIT);
        {
            const RECT area = SmallArea(window);
            const ScopedWorkArea small(window, area);
            ExpectWithin(window, area);
            ExpectExtents(window, m_content);
            SetFocus(GetDlgItem(window, IDOK));
            EXPECT_TRUE(IsSeen(window, IDOK));
            EXPECT_FALSE(IsSeen(window, ITEM_EDIT));
            // What has the keyboard stays in sight.
            SendMessageW(window, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0);
            ExpectExtents(window, m_content);
            EXPECT_TRUE(IsSeen(window, IDOK));
        }
        SendMessageW(window, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0);
        EXPECT_FALSE(HasBar(window, WS_VSCROLL));
        EXPECT_FALSE(HasBar(window, WS_HSCROLL));
        EXPECT_EQ(WindowSize(window).cx, m_whole.cx);
        EXPECT_EQ(WindowSize(window).cy, m_whole.cy);
        const RECT now = DialogWindow(window).Rect(ITEM_EDIT);
        EXPECT_TRUE(EqualRect(&now, &edit));
    });
}

TEST_F(DialogScrollTest, AnotherSettingLeavesItWhereItWasScrolledTo)
{
    Run([&](HWND window) {
        const ScopedWorkArea small(window, SmallArea(window));
        SendMessageW(window, WM_VSCROLL, SB_BOTTOM, 0);
        const int before = Scrolled(window, SB_VERT).nPos;
        EXPECT_GT(before, 0);
        SendMessageW(window, WM_SETTINGCHANGE, 0, 0);
        EXPECT_EQ(Scrolled(window, SB_VERT).nPos, before);
    });
}

TEST_F(DialogScrollTest, TooLargeFromTheStartItLiesInTheMiddleAndShowsWhatHasTheKeyboard)
{
    const RECT area{10, 20, 10 + Scale(500), 20 + Scale(110)};
    const ScopedWorkArea small(nullptr, area);
    m_dialog.onInit = [&] {
        SetFocus(m_dialog.GetItem(IDCANCEL));
        return false;
    };
    RunDialog(m_dialog, [&](HWND window) {
        ShowWindow(window, SW_SHOW);
        ExpectWithin(window, area);
        RECT place{};
        GetWindowRect(window, &place);
        EXPECT_NEAR(place.left + place.right, area.left + area.right, 1);
        EXPECT_NEAR(place.top + place.bottom, area.top + area.bottom, 1);
        EXPECT_TRUE(IsSeen(window, IDCANCEL));
        SendMessageW(window, WM_NEXTDLGCTL, 0, FALSE);
        EXPECT_EQ(GetFocus(), GetDlgItem(window, ITEM_EDIT));
        const RECT edit = DialogWindow(window).Rect(ITEM_EDIT);
        EXPECT_GE(edit.left, 0);
        EXPECT_GE(edit.top, 0);
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

TEST_F(DialogScrollTest, AnotherResolutionScalesWhatIsScrolledTo)
{
    Run([&](HWND window) {
        const RECT edit = DialogWindow(window).Rect(ITEM_EDIT);
        const RECT area = SmallArea(window);
        const ScopedWorkArea small(window, area);
        SetFocus(GetDlgItem(window, IDOK));
        TellDialogResolution(window, 2);
        ExpectWithin(window, area);
        ExpectExtents(window, {2 * m_content.cx, 2 * m_content.cy});
        // The button is larger than what is seen of the dialog: its start is.
        const RECT ok = DialogWindow(window).Rect(IDOK);
        EXPECT_GE(ok.left, 0);
        EXPECT_LT(ok.left, ClientSize(window).cx);
        EXPECT_GE(ok.top, 0);
        TellDialogResolution(window, 1, 2);
        ExpectExtents(window, m_content);
        SendMessageW(window, WM_VSCROLL, SB_TOP, 0);
        SendMessageW(window, WM_HSCROLL, SB_LEFT, 0);
        const RECT now = DialogWindow(window).Rect(ITEM_EDIT);
        EXPECT_NEAR(now.left, edit.left, 1);
        EXPECT_NEAR(now.top, edit.top, 1);
        TellDialogResolution(window, 1, 2);
        EXPECT_FALSE(HasBar(window, WS_VSCROLL)) << "there is room now";
        ExpectClientSize(window, {m_content.cx / 2, m_content.cy / 2});
    });
}

TEST_F(DialogScrollTest, ALargerResolutionBringsBarsToADialogThatHadNone)
{
    Run([&](HWND window) {
        const RECT area{0, 0, m_whole.cx + Scale(20), m_whole.cy + Scale(20)};
        const ScopedWorkArea wide(window, area);
        EXPECT_FALSE(HasBar(window, WS_VSCROLL));
        TellDialogResolution(window, 2);
        ExpectWithin(window, area);
        EXPECT_TRUE(HasBar(window, WS_VSCROLL));
        SetFocus(GetDlgItem(window, IDCANCEL));
        EXPECT_TRUE(IsSeen(window, IDCANCEL));
    });
}

} // namespace
