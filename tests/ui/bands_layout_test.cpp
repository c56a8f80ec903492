// Where bands, buttons and adornments lie: at every resolution.
#include "ui/bars/command_bands.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "support/thread_hook.h"
#include "ui/bands_window.h"
#include "ui/screen/scale.h"

namespace {

bool IsSame(const std::vector<RECT>& a, const std::vector<RECT>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const RECT& one, const RECT& other) { return EqualRect(&one, &other) != FALSE; });
}

bool Contains(const RECT& outer, const RECT& inner)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

RECT ClientRect(HWND window)
{
    RECT rect{};
    GetClientRect(window, &rect);
    return rect;
}

bool IsShown(HWND child)
{
    return (GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0;
}

// Every button lies wholly in its bar, every bar in the bands, and the adornments to the right of them.
void ExpectNothingCutOff(const BandsWindow& window)
{
    const std::string where = "width " + std::to_string(window.ClientWidth());
    for (HWND bar : {window.MenuBar(), window.ButtonBar()}) {
        for (const RECT& button : ButtonRects(bar))
            EXPECT_TRUE(Contains(ClientRect(bar), button)) << where;
        EXPECT_TRUE(Contains(ClientRect(window.Bands()), RectIn(bar, window.Bands()))) << where;
    }
    const RECT bands = RectIn(window.Bands(), window.Window());
    EXPECT_EQ(bands.left, 0) << where;
    EXPECT_EQ(bands.top, 0) << where;
    const RECT adornments = RectIn(window.Adornments(), window.Window());
    EXPECT_EQ(bands.right, adornments.left) << where;
    EXPECT_EQ(adornments.right, window.ClientWidth()) << where;
    EXPECT_EQ(adornments.top, 0) << where;
    EXPECT_EQ(adornments.bottom, bands.bottom) << where;
    ASSERT_EQ(ButtonRects(window.Adornments()).size(), 2u);
    for (const RECT& button : ButtonRects(window.Adornments()))
        EXPECT_TRUE(Contains(ClientRect(window.Adornments()), button)) << where;
    EXPECT_TRUE(IsShown(window.Adornments())) << where;
}

// Where the bands lie, for comparison.
std::string Describe(const BandsWindow& window)
{
    std::string text;
    for (const RECT& rect : window.BandRects())
        text += std::to_string(rect.left) + "," + std::to_string(rect.top) + " to " +
                std::to_string(rect.right) + "," + std::to_string(rect.bottom) + "; ";
    return text;
}

// A second window with what the first one's restore information says.
void ExpectSameLayoutWhenRestored(const BandsWindow& window)
{
    const BandsWindow again(window.ClientWidth(), window.SetupOf(0), window.SetupOf(1));
    EXPECT_EQ(Describe(again), Describe(window));
    for (const int band : {0, 1}) {
        EXPECT_EQ(again.Restore(band).fStyle, window.Restore(band).fStyle);
        EXPECT_EQ(again.Restore(band).cxRestored, window.Restore(band).cxRestored);
        EXPECT_EQ(again.Restore(band).fMaximized, window.Restore(band).fMaximized);
    }
}

} // namespace

TEST(BandsLayout, BothBandsShareOneRowOnTheHandheldsScreen)
{
    const BandsWindow window(Scale(640));
    const RECT menu = window.BandRect(0);
    const RECT buttons = window.BandRect(1);
    EXPECT_EQ(menu.left, 0);
    EXPECT_EQ(menu.right, Scale(155));
    EXPECT_EQ(menu.top, buttons.top);
    EXPECT_GE(buttons.left, menu.right);
    EXPECT_EQ(buttons.right, RectIn(window.Adornments(), window.Window()).left);
    ExpectNothingCutOff(window);
}

TEST(BandsLayout, NothingIsCutOffAtAnyWidth)
{
    BandsWindow window(Scale(640));
    for (const int width : {1920, 1024, 800, 640, 500, 400, 320, 200}) {
        window.SetClientWidth(Scale(width));
        ExpectNothingCutOff(window);
    }
}

TEST(BandsLayout, NothingIsCutOffIn640PixelsAtAnyResolution)
{
    const BandsWindow window(640);
    ExpectNothingCutOff(window);
    EXPECT_LT(CommandBands_Height(window.Bands()), 120);
}

TEST(BandsLayout, NarrowWindowGivesBandsAndButtonsMoreRows)
{
    BandsWindow window(Scale(640));
    const int oneRow = CommandBands_Height(window.Bands());
    int height = oneRow;
    bool hadOneRowOfButtonsBelow = false;
    for (int width = 620; width >= 200; width -= 20) {
        window.SetClientWidth(Scale(width));
        EXPECT_GE(CommandBands_Height(window.Bands()), height);
        height = CommandBands_Height(window.Bands());
        const std::vector<RECT> buttons = ButtonRects(window.ButtonBar());
        hadOneRowOfButtonsBelow =
            hadOneRowOfButtonsBelow ||
            (window.BandRect(1).top > 0 && buttons.back().top == buttons.front().top && height > oneRow);
    }
    EXPECT_TRUE(hadOneRowOfButtonsBelow);
    EXPECT_GT(window.BandRect(1).top, window.BandRect(0).top);
    EXPECT_GT(ButtonRects(window.ButtonBar()).back().top, ButtonRects(window.ButtonBar()).front().top);
    ExpectNothingCutOff(window);

    window.SetClientWidth(Scale(640));
    EXPECT_EQ(CommandBands_Height(window.Bands()), oneRow);
    EXPECT_EQ(ButtonRects(window.ButtonBar()).back().top, ButtonRects(window.ButtonBar()).front().top);
    EXPECT_EQ(window.BandRect(0).right, Scale(155));
    ExpectNothingCutOff(window);
}

TEST(BandsLayout, HeightIsThatOfTheBandsWindow)
{
    const BandsWindow window(Scale(640));
    const RECT bands = RectIn(window.Bands(), window.Window());
    EXPECT_EQ(CommandBands_Height(window.Bands()), bands.bottom);
    EXPECT_GE(CommandBands_Height(window.Bands()), Scale(16));
    EXPECT_LE(CommandBands_Height(window.Bands()), Scale(32));
}

TEST(BandsLayout, DropDownButtonHasItsWidth)
{
    const BandsWindow window(Scale(640));
    const RECT filter = ButtonRects(window.ButtonBar()).back();
    EXPECT_EQ(filter.right - filter.left, Scale(110));
}

TEST(BandsLayout, WiderButtonMakesRoom)
{
    const BandsWindow window(Scale(640));
    const int before = CommandBands_Height(window.Bands());
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    info.cx = static_cast<WORD>(Scale(440));
    SendMessageW(window.ButtonBar(), TB_SETBUTTONINFOW, kFilterCommand, reinterpret_cast<LPARAM>(&info));
    ExpectNothingCutOff(window);
    EXPECT_GT(CommandBands_Height(window.Bands()), before);
}

TEST(BandsLayout, DefaultLayoutIsRestored)
{
    const BandsWindow window(Scale(640));
    EXPECT_EQ(window.Restore(0).wID, kMenuBandId);
    EXPECT_EQ(window.Restore(0).fStyle, 256u);
    EXPECT_EQ(window.Restore(0).cxRestored, static_cast<UINT>(Scale(155)));
    EXPECT_FALSE(window.Restore(0).fMaximized);
    EXPECT_EQ(window.Restore(1).wID, kButtonBandId);
    EXPECT_EQ(window.Restore(1).fStyle, 128u);
    EXPECT_EQ(window.Restore(1).cxRestored, static_cast<UINT>(Scale(140)));
    EXPECT_FALSE(window.Restore(1).fMaximized);
    ExpectSameLayoutWhenRestored(window);
}

TEST(BandsLayout, DraggedWidthIsRestored)
{
    BandsWindow window(Scale(800));
    for (const int step : {Scale(60), -Scale(25)}) {
        const RECT before = window.BandRect(0);
        window.DragGripper(step, 0);
        EXPECT_EQ(window.BandRect(0).right, before.right + step);
        EXPECT_EQ(window.Restore(0).cxRestored, static_cast<UINT>(before.right + step));
        ExpectSameLayoutWhenRestored(window);
    }
}

// What the system's own procedure of a rebar does of itself when it lets go of the mouse: set it, and it is
// done. The second press of a double click is one to it, as any other.
struct WithinTheControl {
    HWND rebar;
    UINT message;

    static inline WithinTheControl* s_current = nullptr;
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION && s_current && sent.message == WM_CAPTURECHANGED &&
            sent.hwnd == s_current->rebar)
            s_current->Do(s_current->message, 1, FALSE);
        if (code == HC_ACTION && s_current && sent.message == WM_LBUTTONDBLCLK &&
            sent.hwnd == s_current->rebar)
            s_current->Do(WM_LBUTTONDOWN, sent.wParam, sent.lParam);
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    void Do(UINT what, WPARAM wParam, LPARAM lParam) const
    {
        WNDCLASSW own{};
        ASSERT_TRUE(GetClassInfoW(nullptr, REBARCLASSNAMEW, &own));
        CallWindowProcW(own.lpfnWndProc, rebar, what, wParam, lParam);
    }
};

// As some systems do where a gripper is clicked.
void ExpectToFollowTwoClicks(UINT secondPress)
{
    BandsWindow window(Scale(800));
    window.Show();
    WithinTheControl within{window.Bands(), RB_MAXIMIZEBAND};
    WithinTheControl::s_current = &within;
    const ThreadHook hook(WH_CALLWNDPROC, WithinTheControl::Hook);
    std::vector<bool> told; // of the band, at each change of the layout
    window.onMessage = [&](UINT message, WPARAM, LPARAM lParam, LRESULT*) {
        if (message == WM_NOTIFY &&
            reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(RBN_LAYOUTCHANGED))
            told.push_back(window.Restore(1).fMaximized != FALSE);
        return false;
    };
    const auto click = [&](UINT press) {
        const LPARAM point = MAKELPARAM(window.BandRect(1).left + 4, window.BandRect(1).top + 6);
        SendMessageW(window.Bands(), press, MK_LBUTTON, point);
        SendMessageW(window.Bands(), WM_LBUTTONUP, 0, point);
    };
    const LONG before = window.BandRect(1).left;
    const UINT asked = window.Restore(1).cxRestored;
    click(WM_LBUTTONDOWN);
    EXPECT_LT(window.BandRect(1).left, before);
    EXPECT_TRUE(window.Restore(1).fMaximized);
    EXPECT_EQ(window.Restore(1).cxRestored, asked);
    EXPECT_FALSE(window.Restore(0).fMaximized);
    within.message = RB_MINIMIZEBAND;
    click(secondPress);
    EXPECT_FALSE(window.Restore(1).fMaximized);
    EXPECT_EQ(told, (std::vector{true, false}));
    WithinTheControl::s_current = nullptr;
}

TEST(BandsLayout, ABandThatTheControlMaximisesAtAClickCountsAsMaximised)
{
    ExpectToFollowTwoClicks(WM_LBUTTONDOWN);
}

TEST(BandsLayout, ADoubleClickOnAGripperIsTwoClicks)
{
    ExpectToFollowTwoClicks(WM_LBUTTONDBLCLK);
}

TEST(BandsLayout, DraggedWidthOutlivesANarrowWindow)
{
    BandsWindow window(Scale(800));
    window.DragGripper(Scale(60), 0);
    const std::vector<RECT> dragged = window.BandRects();
    window.SetClientWidth(Scale(320));
    EXPECT_EQ(window.Restore(0).cxRestored, static_cast<UINT>(dragged[0].right));
    window.SetClientWidth(Scale(800));
    EXPECT_TRUE(IsSame(window.BandRects(), dragged));
}

TEST(BandsLayout, BandIsNeverDraggedOverButtons)
{
    BandsWindow window(Scale(640));
    window.DragGripper(-Scale(640), 0);
    ExpectNothingCutOff(window);
    ExpectSameLayoutWhenRestored(window);
    window.DragGripper(Scale(640), 0);
    ExpectNothingCutOff(window);
    ExpectSameLayoutWhenRestored(window);
}

TEST(BandsLayout, RowOfItsOwnIsRestored)
{
    BandsWindow window(Scale(640));
    window.DragGripper(0, Scale(60));
    EXPECT_GT(window.BandRect(1).top, window.BandRect(0).top);
    EXPECT_EQ(window.Restore(1).fStyle, 128u | RBBS_BREAK);
    ExpectNothingCutOff(window);
    ExpectSameLayoutWhenRestored(window);
}

TEST(BandsLayout, BandsKeepTheirOrder)
{
    BandsWindow window(Scale(640));
    for (const int dy : {-Scale(60), Scale(60), -Scale(60)}) {
        window.DragGripper(-Scale(640), dy);
        EXPECT_EQ(SendMessageW(window.Bands(), RB_IDTOINDEX, kMenuBandId, 0), 0);
        EXPECT_EQ(SendMessageW(window.Bands(), RB_IDTOINDEX, kButtonBandId, 0), 1);
        ExpectNothingCutOff(window);
        ExpectSameLayoutWhenRestored(window);
    }
}

TEST(BandsLayout, MaximizedBandLeavesTheOtherItsButtonsOnly)
{
    const BandsWindow window(Scale(1024));
    window.SendMaximize(0);
    const RECT lastButton = ButtonRects(window.ButtonBar()).back();
    EXPECT_LT(RectIn(window.ButtonBar(), window.Bands()).right -
                  RectIn(window.ButtonBar(), window.Bands()).left,
              lastButton.right + Scale(20));
    ExpectNothingCutOff(window);
    window.SendMaximize(1);
    EXPECT_LT(window.BandRect(0).right, Scale(155));
    ExpectNothingCutOff(window);
}

TEST(BandsLayout, MaximizedLayoutIsRestored)
{
    for (const int band : {0, 1}) {
        const BandsWindow window(Scale(1024));
        window.SendMaximize(band);
        EXPECT_TRUE(window.Restore(band).fMaximized);
        EXPECT_FALSE(window.Restore(1 - band).fMaximized);
        EXPECT_EQ(window.Restore(band).cxRestored, static_cast<UINT>(Scale(band ? 140 : 155)));
        ExpectSameLayoutWhenRestored(window);
    }
}

TEST(BandsLayout, WidthBeforeItWasMaximizedIsKeptWhateverComes)
{
    BandsWindow window(Scale(1024));
    window.SendMaximize(0);
    window.SendMaximize(0);
    window.SetClientWidth(Scale(320));
    window.SetClientWidth(Scale(1200));
    EXPECT_EQ(window.Restore(0).cxRestored, static_cast<UINT>(Scale(155)));
    EXPECT_TRUE(window.Restore(0).fMaximized);
    ExpectSameLayoutWhenRestored(window);
}

TEST(BandsLayout, MaximizingOneEndsTheOthersMaximum)
{
    const BandsWindow window(Scale(1024));
    window.SendMaximize(0);
    window.SendMaximize(1);
    EXPECT_FALSE(window.Restore(0).fMaximized);
    EXPECT_TRUE(window.Restore(1).fMaximized);
    ExpectSameLayoutWhenRestored(window);
}

TEST(BandsLayout, DragEndsTheMaximum)
{
    BandsWindow window(Scale(1024));
    window.SendMaximize(0);
    window.DragGripper(-Scale(100), 0);
    EXPECT_FALSE(window.Restore(0).fMaximized);
    EXPECT_EQ(window.Restore(0).cxRestored, static_cast<UINT>(window.BandRect(0).right));
    ExpectSameLayoutWhenRestored(window);
}

TEST(BandsLayout, ClickOnTheGripperChangesNothing)
{
    BandsWindow window(Scale(1024));
    window.SendMaximize(0);
    const std::vector<RECT> before = window.BandRects();
    window.DragGripper(0, 0);
    EXPECT_TRUE(IsSame(window.BandRects(), before));
    EXPECT_TRUE(window.Restore(0).fMaximized);
}

TEST(BandsLayout, MinimizedParentLeavesTheLayoutAlone)
{
    BandsWindow window(Scale(640));
    const std::vector<RECT> before = window.BandRects();
    const int height = CommandBands_Height(window.Bands());
    ShowWindow(window.Window(), SW_MINIMIZE);
    EXPECT_TRUE(PumpUntil([&window] { return IsIconic(window.Window()) != FALSE; }));
    CommandBands_Resize(window.Bands());
    EXPECT_EQ(CommandBands_Height(window.Bands()), height);
    ShowWindow(window.Window(), SW_RESTORE);
    EXPECT_TRUE(PumpUntil([&window] { return window.ClientWidth() == Scale(640); }));
    EXPECT_TRUE(IsSame(window.BandRects(), before));
}

TEST(BandsLayout, AnyStoredStyleAndWidthDo)
{
    const UINT widths[] = {0, 1, 30'000, 65'536, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const UINT styles[] = {0, RBBS_HIDDEN, RBBS_BREAK | RBBS_FIXEDSIZE, 0xFFFFFFFF,
                           RBBS_VARIABLEHEIGHT | RBBS_HIDETITLE};
    for (const UINT width : widths)
        for (const UINT style : styles) {
            const BandsWindow window(Scale(640), {style, width}, {style, width});
            EXPECT_TRUE(IsShown(window.MenuBar())) << style << " " << width;
            EXPECT_TRUE(IsShown(window.ButtonBar())) << style << " " << width;
            EXPECT_FALSE(window.Restore(0).fStyle & RBBS_HIDDEN);
            ExpectNothingCutOff(window);
            ExpectSameLayoutWhenRestored(window);
        }
}
