// What the base of the dialogs does for itself and its controls.
#include "ui/dialog.h"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "support/resolution.h"
#include "support/slot_of.h"
#include "support/test_windows.h"
#include "ui/dialog_fixture.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "ui/ui_test_resource.h"
#include "ui/window_hook.h"
#include "util/owners.h"

namespace {

RECT WindowRect(HWND window)
{
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

bool IsSame(const RECT& a, const RECT& b)
{
    return EqualRect(&a, &b) != FALSE;
}

// The width of the icon that a window was given; 0 when it has none.
int IconSize(HWND window, WPARAM which)
{
    ICONINFO info{};
    if (!GetIconInfo(reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, which, 0)), &info))
        return 0;
    const UniqueBitmap color(info.hbmColor);
    const UniqueBitmap mask(info.hbmMask);
    BITMAP description{};
    GetObjectW(color.get(), sizeof description, &description);
    return static_cast<int>(description.bmWidth);
}

} // namespace

TEST(Dialog, OperationsAreInTheirOrder)
{
    const size_t slots[] = {SlotOf(&Dialog::OnOK),
                            SlotOf(&Dialog::OnCancel),
                            SlotOf(&Dialog::EnableItem),
                            SlotOf(&Dialog::ScreenToClientRect),
                            SlotOf(&Dialog::ClientToScreenRect),
                            SlotOf(&Dialog::GetClientRectangle),
                            SlotOf(&Dialog::GetItem),
                            SlotOf(&Dialog::GetWindow),
                            SlotOf(&Dialog::SetWindow),
                            SlotOf(&Dialog::MoveWindow),
                            SlotOf(&Dialog::SetWindowPosition),
                            SlotOf(&Dialog::CenterOnWorkArea),
                            SlotOf(&Dialog::CheckButton),
                            SlotOf(&Dialog::IsItemVisible),
                            SlotOf(&Dialog::HideWindow),
                            SlotOf(&Dialog::HideItem),
                            SlotOf(&Dialog::ShowWindow),
                            SlotOf(&Dialog::ShowItem),
                            SlotOf(&Dialog::OnSettingsChanged),
                            SlotOf(&Dialog::IsButtonChecked),
                            SlotOf(&Dialog::ShowInputPanel)};
    for (size_t i = 0; i < sizeof slots / sizeof slots[0]; ++i)
        EXPECT_EQ(slots[i], i);
}

TEST(Dialog, FocusThatInitialisationSetStays)
{
    TestDialog dialog;
    dialog.onInit = [&dialog] {
        SetFocus(dialog.GetItem(ITEM_CHECK));
        return false;
    };
    HWND focus = nullptr;
    HWND check = nullptr;
    RunDialog(dialog, [&](HWND window) {
        focus = GetFocus();
        check = GetDlgItem(window, ITEM_CHECK);
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
    EXPECT_NE(check, nullptr);
    EXPECT_EQ(focus, check);
}

TEST(Dialog, MayEndWhileItInitialises)
{
    TestDialog dialog;
    dialog.onInit = [&dialog] {
        dialog.OnCancel();
        return true;
    };
    EXPECT_EQ(dialog.DoModal(Instance(), TEST_DIALOG, nullptr), 0);
}

TEST(Dialog, WhatCannotBeMadeGivesMinusOne)
{
    TestDialog dialog;
    EXPECT_EQ(dialog.DoModal(Instance(), 9999, nullptr), -1);
    HWND gone =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, Instance(), nullptr);
    DestroyWindow(gone);
    EXPECT_EQ(dialog.DoModal(Instance(), TEST_DIALOG, gone), -1);
}

TEST(Dialog, RectanglesConvertBothWays)
{
    TestDialog dialog;
    RunDialog(dialog, [&dialog](HWND window) {
        POINT corner{};
        ClientToScreen(window, &corner);
        RECT rect{1, 2, 30, 40};
        dialog.ClientToScreenRect(&rect);
        EXPECT_TRUE(IsSame(rect, {corner.x + 1, corner.y + 2, corner.x + 30, corner.y + 40}));
        dialog.ScreenToClientRect(&rect);
        EXPECT_TRUE(IsSame(rect, {1, 2, 30, 40}));

        RECT expected{};
        dialog.GetClientRectangle(&rect);
        GetClientRect(window, &expected);
        EXPECT_TRUE(IsSame(rect, expected));
        dialog.GetClientRectangle(&rect, dialog.GetItem(IDOK));
        GetClientRect(GetDlgItem(window, IDOK), &expected);
        EXPECT_TRUE(IsSame(rect, expected));
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

TEST(Dialog, MovesItselfOrAControl)
{
    TestDialog dialog;
    RunDialog(dialog, [&dialog](HWND window) {
        // Until then a window manager may still be placing it.
        ShowWindow(window, SW_SHOW);
        EXPECT_TRUE(PumpUntil([window] { return GetForegroundWindow() == window; }));
        dialog.MoveWindow(31, 42, 310, 220, true);
        EXPECT_TRUE(PumpUntil([window] { return IsSame(WindowRect(window), {31, 42, 341, 262}); }));
        dialog.MoveWindow(5, 6, 70, 80, true, dialog.GetItem(ITEM_EDIT));
        RECT rect = WindowRect(GetDlgItem(window, ITEM_EDIT));
        dialog.ScreenToClientRect(&rect);
        EXPECT_TRUE(IsSame(rect, {5, 6, 75, 86}));
        dialog.SetWindowPosition(7, 8, 0, 0, dialog.GetItem(ITEM_EDIT), SWP_NOSIZE | SWP_NOZORDER, nullptr);
        rect = WindowRect(GetDlgItem(window, ITEM_EDIT));
        dialog.ScreenToClientRect(&rect);
        EXPECT_TRUE(IsSame(rect, {7, 8, 77, 88}));
        // A late event of the display can take the one before back once more.
        EXPECT_TRUE(PumpUntil([&] {
            if (!IsSame(WindowRect(window), {31, 42, 331, 242})) {
                dialog.MoveWindow(31, 42, 310, 220, true);
                dialog.SetWindowPosition(0, 0, 300, 200, nullptr, SWP_NOMOVE | SWP_NOZORDER, nullptr);
            }
            return IsSame(WindowRect(window), {31, 42, 331, 242});
        }));
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

TEST(Dialog, CentersOnTheWorkArea)
{
    TestDialog dialog;
    RunDialog(dialog, [&dialog](HWND window) {
        const RECT area = WorkArea();
        dialog.MoveWindow(0, 0, 301, 200, true);
        dialog.CenterOnWorkArea();
        const RECT rect = WindowRect(window);
        EXPECT_NEAR(rect.left - area.left, area.right - rect.right, 1);
        EXPECT_NEAR(rect.top - area.top, area.bottom - rect.bottom, 1);
        EXPECT_EQ(rect.right - rect.left, 301);
        // Larger than the work area: the caption stays in sight.
        dialog.MoveWindow(0, 0, area.right - area.left + 100, area.bottom - area.top + 100, true);
        dialog.CenterOnWorkArea();
        EXPECT_EQ(WindowRect(window).left, area.left);
        EXPECT_EQ(WindowRect(window).top, area.top);
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

TEST(Dialog, CentersOnItsOwnerAsFarAsTheWorkAreaAllows)
{
    const RECT area = WorkArea();
    const TestParent owner;
    TestDialog dialog;
    RunDialog(
        dialog,
        [&](HWND window) {
            dialog.MoveWindow(0, 0, 300, 200, true);
            const auto centre = [&](LONG x, LONG y) {
                const RECT place{x, y, x + 400, y + 230};
                EXPECT_TRUE(PumpUntil([&] { // a late event of the display can take it back once more
                    MoveWindow(owner.Handle(), x, y, 400, 230, FALSE);
                    return IsSame(WindowRect(owner.Handle()), place);
                }));
                dialog.CenterOnOwner();
                return WindowRect(window);
            };
            EXPECT_TRUE(IsSame(centre(area.left + 100, area.top + 10),
                               {area.left + 150, area.top + 25, area.left + 450, area.top + 225}));
            EXPECT_TRUE(IsSame(centre(area.right - 100, area.bottom - 80),
                               {area.right - 300, area.bottom - 200, area.right, area.bottom}));
            EXPECT_TRUE(IsSame(centre(area.left - 300, area.top - 150),
                               {area.left, area.top, area.left + 300, area.top + 200}));
            SendMessageW(window, WM_CLOSE, 0, 0);
        },
        owner.Handle());
}

// Its rectangle says nothing then.
TEST(Dialog, CentersOnTheWorkAreaOverAMinimisedOwner)
{
    const RECT area = WorkArea();
    const TestParent owner;
    TestDialog dialog;
    RunDialog(
        dialog,
        [&](HWND window) {
            MoveWindow(owner.Handle(), area.left, area.top, 320, 240, FALSE);
            ShowWindow(owner.Handle(), SW_MINIMIZE);
            ASSERT_TRUE(IsIconic(owner.Handle()));
            dialog.MoveWindow(0, 0, 300, 200, true);
            dialog.CenterOnOwner();
            const RECT rect = WindowRect(window);
            EXPECT_NEAR(rect.left - area.left, area.right - rect.right, 1);
            EXPECT_NEAR(rect.top - area.top, area.bottom - rect.bottom, 1);
            SendMessageW(window, WM_CLOSE, 0, 0);
        },
        owner.Handle());
}

TEST(Dialog, GrowsAsFarAsTheWorkAreaHasRoom)
{
    const RECT area = WorkArea();
    const int room = area.bottom - area.top;
    for (const int most : {30, 10'000}) {
        TestDialog dialog;
        RunDialog(dialog, [&](HWND window) {
            const RECT before = WindowRect(window);
            const int growth = std::min(Scale(most), room - static_cast<int>(before.bottom - before.top));
            const RECT edit = WindowRect(GetDlgItem(window, ITEM_EDIT));
            const RECT check = WindowRect(GetDlgItem(window, ITEM_CHECK));
            const RECT ok = WindowRect(GetDlgItem(window, IDOK));
            dialog.Grow(most, {ITEM_EDIT}, {IDOK});
            const RECT after = WindowRect(window);
            EXPECT_TRUE(IsSame(after, {before.left, before.top, before.right, before.bottom + growth}));
            EXPECT_TRUE(IsSame(WindowRect(GetDlgItem(window, ITEM_EDIT)),
                               {edit.left, edit.top, edit.right, edit.bottom + growth}));
            EXPECT_TRUE(IsSame(WindowRect(GetDlgItem(window, ITEM_CHECK)), check));
            EXPECT_TRUE(IsSame(WindowRect(GetDlgItem(window, IDOK)),
                               {ok.left, ok.top + growth, ok.right, ok.bottom + growth}));
            dialog.OnOK();
        });
    }
}

TEST(Dialog, ADisabledControlHandsTheKeyboardOn)
{
    TestDialog dialog;
    RunDialog(dialog, [&](HWND window) {
        ShowWindow(window, SW_SHOW);
        SetFocus(GetDlgItem(window, IDOK));
        dialog.KeepFocus(ITEM_CHECK);
        EXPECT_EQ(GetFocus(), GetDlgItem(window, IDOK)) << "it can be used";
        EnableWindow(GetDlgItem(window, IDOK), FALSE);
        dialog.KeepFocus(ITEM_CHECK);
        EXPECT_EQ(GetFocus(), GetDlgItem(window, ITEM_CHECK));
        EnableWindow(GetDlgItem(window, ITEM_CHECK), FALSE);
        dialog.KeepFocus(ITEM_CHECK);
        EXPECT_EQ(GetFocus(), GetDlgItem(window, IDCANCEL)) << "the next one that can be used";
        dialog.OnOK();
    });
}

TEST(Dialog, ItemsAreShownEnabledAndChecked)
{
    TestDialog dialog;
    dialog.onInit = [&dialog] {
        // The dialog itself is not yet on the screen.
        EXPECT_TRUE(dialog.IsItemVisible(ITEM_EDIT));
        EXPECT_FALSE(dialog.IsItemVisible(ITEM_HIDDEN));
        return true;
    };
    RunDialog(dialog, [&dialog](HWND window) {
        ShowWindow(window, SW_SHOW);
        dialog.ShowItem(ITEM_HIDDEN);
        EXPECT_TRUE(dialog.IsItemVisible(ITEM_HIDDEN));
        dialog.HideItem(ITEM_HIDDEN);
        EXPECT_FALSE(dialog.IsItemVisible(ITEM_HIDDEN));
        dialog.HideWindow(dialog.GetItem(ITEM_EDIT));
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(window, ITEM_EDIT)));
        dialog.ShowWindow(dialog.GetItem(ITEM_EDIT));
        EXPECT_TRUE(IsWindowVisible(GetDlgItem(window, ITEM_EDIT)));

        dialog.EnableItem(ITEM_EDIT, false);
        EXPECT_FALSE(IsWindowEnabled(GetDlgItem(window, ITEM_EDIT)));
        dialog.EnableItem(ITEM_EDIT, true);
        EXPECT_TRUE(IsWindowEnabled(GetDlgItem(window, ITEM_EDIT)));

        EXPECT_FALSE(dialog.IsButtonChecked(ITEM_CHECK));
        dialog.CheckButton(ITEM_CHECK, true);
        EXPECT_TRUE(dialog.IsButtonChecked(ITEM_CHECK));
        dialog.CheckButton(ITEM_CHECK, false);
        EXPECT_FALSE(dialog.IsButtonChecked(ITEM_CHECK));
        dialog.ShowInputPanel(true); // no effect
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

TEST(Dialog, ACaptionShowsTheProgramsIcon)
{
    TestDialog dialog;
    RunDialog(dialog, [](HWND window) {
        EXPECT_EQ(IconSize(window, ICON_SMALL), Scale(16));
        EXPECT_EQ(IconSize(window, ICON_BIG), Scale(32));
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

// Once for each change, when the dialog manager has done its part.
TEST(Dialog, AnotherResolutionIsToldOnceAndBringsItsIcons)
{
    TestDialog dialog;
    RunDialog(dialog, [&dialog](HWND window) {
        const int own = SystemDpi();
        TellResolution(window, 2);
        EXPECT_EQ(dialog.resolutionsBefore, std::vector{own});
        EXPECT_EQ(DpiOf(GetDlgItem(window, ITEM_EDIT)), 2 * own);
        EXPECT_EQ(IconSize(window, ICON_SMALL), 2 * Scale(16));
        EXPECT_EQ(IconSize(window, ICON_BIG), 2 * Scale(32));
        TellResolution(window, 1);
        EXPECT_EQ(dialog.resolutionsBefore.size(), 1u) << "it is none";
        TellResolution(window, 1, 2);
        EXPECT_EQ(dialog.resolutionsBefore, (std::vector{own, 2 * own}));
        EXPECT_EQ(IconSize(window, ICON_SMALL), Scale(16));
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

// The system tells the dialog alone.
TEST(Dialog, ItsControlsHearOfOtherColoursAndSettings)
{
    TestDialog dialog;
    RunDialog(dialog, [](HWND window) {
        std::vector<UINT> heard;
        WindowHook hook;
        const auto note = [](void* self, UINT message, WPARAM, LPARAM) -> LRESULT {
            static_cast<std::vector<UINT>*>(self)->push_back(message);
            return 0;
        };
        ASSERT_TRUE(hook.Attach(GetDlgItem(window, ITEM_EDIT), note, &heard));
        SendMessageW(window, WM_SYSCOLORCHANGE, 0, 0);
        SendMessageW(window, WM_SETTINGCHANGE, 0, 0);
        EXPECT_EQ(heard, (std::vector<UINT>{WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}));
        hook.Detach();
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

// Its controls are the dialog manager's: they would be scaled twice.
TEST(Dialog, AnotherResolutionLeavesTheControlsToTheDialogManager)
{
    TestDialog dialog;
    LRESULT answered = 1;
    RunDialog(dialog, [&](HWND window) {
        RECT suggested{};
        const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(window, DWLP_DLGPROC));
        answered =
            procedure(window, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&suggested));
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(answered, FALSE) << "the dialog manager takes it";
}

TEST(Dialog, ADialogWithoutASystemMenuHasNoIcon)
{
    TestDialog dialog;
    const ModalDriver driver([](HWND window) {
        EXPECT_EQ(IconSize(window, ICON_SMALL), 0);
        EXPECT_EQ(IconSize(window, ICON_BIG), 0);
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(dialog.DoModal(Instance(), TEST_BARE_DIALOG, nullptr), 0);
    EXPECT_TRUE(driver.Ran());
}

TEST(Dialog, MissingItemTouchesNothing)
{
    TestDialog dialog;
    RunDialog(dialog, [&dialog](HWND window) {
        ShowWindow(window, SW_SHOW);
        EXPECT_EQ(dialog.GetItem(ITEM_MISSING), nullptr);
        dialog.HideItem(ITEM_MISSING);
        dialog.EnableItem(ITEM_MISSING, false);
        dialog.CheckButton(ITEM_MISSING, true);
        EXPECT_FALSE(dialog.IsItemVisible(ITEM_MISSING));
        EXPECT_FALSE(dialog.IsButtonChecked(ITEM_MISSING));
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_TRUE(IsWindowEnabled(window));
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}
