#include "ui/dialog.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/import_watch.h"
#include "support/test_windows.h"
#include "ui/scale.h"
#include "ui/ui_test_resource.h"
#include "ui/work_area.h"
#include "util/owners.h"

namespace {

HINSTANCE Instance()
{
    return GetModuleHandleW(nullptr);
}

class TestDialog : public Dialog {
  public:
    void OnOK() override
    {
        ++okCount;
        Dialog::OnOK();
    }
    void OnCancel() override
    {
        ++cancelCount;
        Dialog::OnCancel();
    }
    void OnSettingsChanged() override { ++settingsCount; }

    const wchar_t* Unsaved() const override { return unsaved; }
    void OnSessionEnd() override { ++sessionEnds; }

    using Dialog::Grow;
    using Dialog::KeepFocus;

    std::function<bool()> onInit;
    std::function<bool(UINT, WPARAM, LPARAM, LRESULT*)> onMessage;
    std::vector<UINT> messages;
    int okCount = 0;
    int cancelCount = 0;
    int settingsCount = 0;
    const wchar_t* unsaved = nullptr;
    int sessionEnds = 0;

  protected:
    bool OnInitDialog() override { return onInit ? onInit() : true; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        messages.push_back(message);
        return onMessage && onMessage(message, wParam, lParam, result);
    }
};

INT_PTR RunDialog(TestDialog& dialog, const std::function<void(HWND)>& action, HWND owner = nullptr)
{
    const ModalDriver driver(action);
    const INT_PTR result = dialog.DoModal(Instance(), TEST_DIALOG, owner);
    EXPECT_TRUE(driver.Ran());
    return result;
}

void PressKey(HWND dialog, WPARAM key)
{
    PostMessageW(GetFocus() ? GetFocus() : dialog, WM_KEYDOWN, key, 1);
}

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

// The place of a virtual operation in the table of its class.
template <typename Operation> size_t SlotOf(Operation operation)
{
    static_assert(sizeof operation >= sizeof(size_t));
    size_t offset = 0;
    memcpy(&offset, &operation, sizeof offset);
    return (offset - 1) / sizeof(void*);
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

TEST(Dialog, OKEndsWithOneAndCancelWithZero)
{
    TestDialog dialog;
    EXPECT_EQ(RunDialog(dialog, [](HWND window) { SendDlgItemMessageW(window, IDOK, BM_CLICK, 0, 0); }), 1);
    EXPECT_EQ(dialog.okCount, 1);
    EXPECT_EQ(RunDialog(dialog, [](HWND window) { SendDlgItemMessageW(window, IDCANCEL, BM_CLICK, 0, 0); }),
              0);
    EXPECT_EQ(dialog.cancelCount, 1);
    EXPECT_EQ(dialog.okCount, 1);
}

TEST(Dialog, EnterAndEscapeWorkWithAndWithoutButtons)
{
    TestDialog dialog;
    EXPECT_EQ(RunDialog(dialog, [](HWND window) { PressKey(window, VK_RETURN); }), 1);
    EXPECT_EQ(RunDialog(dialog, [](HWND window) { PressKey(window, VK_ESCAPE); }), 0);
    const ModalDriver driver([](HWND window) { PressKey(window, VK_ESCAPE); });
    EXPECT_EQ(dialog.DoModal(Instance(), TEST_INNER_DIALOG, nullptr), 0);
    EXPECT_EQ(dialog.cancelCount, 2);
}

TEST(Dialog, CloseCancels)
{
    TestDialog dialog;
    EXPECT_EQ(RunDialog(dialog, [](HWND window) { PostMessageW(window, WM_CLOSE, 0, 0); }), 0);
    EXPECT_EQ(dialog.cancelCount, 1);
}

TEST(Dialog, DisabledButtonIsNotPressedByItsKey)
{
    TestDialog dialog;
    EXPECT_EQ(RunDialog(dialog,
                        [&dialog](HWND window) {
                            dialog.EnableItem(IDOK, false);
                            SendMessageW(window, WM_COMMAND, IDOK, 0);
                            EXPECT_EQ(dialog.okCount, 0);
                            dialog.EnableItem(IDCANCEL, false);
                            SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
                            EXPECT_EQ(dialog.cancelCount, 0);
                            dialog.EnableItem(IDOK, true);
                            SendMessageW(window, WM_COMMAND, IDOK, 0);
                        }),
              1);
}

TEST(Dialog, OnlyClicksAndKeysOfTheButtonsCount)
{
    TestDialog dialog;
    RunDialog(dialog, [&dialog](HWND window) {
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDOK, BN_SETFOCUS), 0);
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_KILLFOCUS), 0);
        SendMessageW(window, WM_COMMAND, 3, 0);
        EXPECT_EQ(dialog.okCount + dialog.cancelCount, 0);
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDOK, 1), 0);
    });
    EXPECT_EQ(dialog.okCount, 1);
}

TEST(Dialog, SettingsChangeReachesItsHandler)
{
    TestDialog dialog;
    RunDialog(dialog, [](HWND window) {
        SendMessageW(window, WM_SETTINGCHANGE, 0, 0);
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(dialog.settingsCount, 1);
}

TEST(Dialog, HandlerComesBeforeTheDefault)
{
    TestDialog dialog;
    bool eat = true;
    dialog.onMessage = [&eat](UINT message, WPARAM, LPARAM, LRESULT*) {
        return eat && (message == WM_COMMAND || message == WM_CLOSE || message == WM_SETTINGCHANGE);
    };
    RunDialog(dialog, [&](HWND window) {
        SendMessageW(window, WM_COMMAND, IDOK, 0);
        SendMessageW(window, WM_CLOSE, 0, 0);
        SendMessageW(window, WM_SETTINGCHANGE, 0, 0);
        EXPECT_EQ(dialog.okCount + dialog.cancelCount + dialog.settingsCount, 0);
        eat = false;
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
    EXPECT_EQ(dialog.cancelCount, 1);
}

TEST(Dialog, HandlersResultIsTheAnswer)
{
    HBRUSH brush = GetSysColorBrush(COLOR_INFOBK);
    TestDialog dialog;
    dialog.onMessage = [brush](UINT message, WPARAM, LPARAM, LRESULT* result) {
        *result = message == WM_CTLCOLORSTATIC ? reinterpret_cast<LRESULT>(brush) : 4711;
        return message == WM_CTLCOLORSTATIC || message == WM_APP;
    };
    RunDialog(dialog, [brush](HWND window) {
        EXPECT_EQ(SendMessageW(window, WM_APP, 0, 0), 4711);
        EXPECT_EQ(SendMessageW(window, WM_APP + 1, 0, 0), 0);
        // Colours are answered by the procedure's own value.
        HDC dc = GetDC(window);
        EXPECT_EQ(SendMessageW(window, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                               reinterpret_cast<LPARAM>(GetDlgItem(window, IDOK))),
                  reinterpret_cast<LRESULT>(brush));
        ReleaseDC(window, dc);
        SendMessageW(window, WM_CLOSE, 0, 0);
    });
}

TEST(Dialog, NoMessageComesBeforeInitialisation)
{
    TestDialog dialog;
    bool isFirst = false;
    dialog.onInit = [&] {
        isFirst = dialog.messages.empty();
        EXPECT_NE(dialog.GetWindow(), nullptr);
        return true;
    };
    RunDialog(dialog, [](HWND window) { SendMessageW(window, WM_CLOSE, 0, 0); });
    EXPECT_TRUE(isFirst);
    EXPECT_FALSE(dialog.messages.empty());
    EXPECT_EQ(dialog.messages.back(), static_cast<UINT>(WM_NCDESTROY));
    EXPECT_EQ(dialog.GetWindow(), nullptr);
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

TEST(Dialog, OwnerIsDisabledWhileItRuns)
{
    const TestParent owner;
    TestDialog dialog;
    RunDialog(
        dialog,
        [&owner](HWND window) {
            EXPECT_FALSE(IsWindowEnabled(owner.Handle()));
            SendMessageW(window, WM_CLOSE, 0, 0);
        },
        owner.Handle());
    EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
}

TEST(Dialog, DialogsNest)
{
    TestDialog outer;
    TestDialog inner;
    INT_PTR innerResult = -1;
    const INT_PTR result = [&] {
        const ModalDriver driver([&](HWND window) {
            const ModalDriver innerDriver([](HWND inside) { SendMessageW(inside, WM_COMMAND, IDCANCEL, 0); });
            innerResult = inner.DoModal(Instance(), TEST_INNER_DIALOG, window);
            EXPECT_EQ(outer.GetWindow(), window);
            EXPECT_EQ(inner.GetWindow(), nullptr);
            SendMessageW(window, WM_COMMAND, IDOK, 0);
        });
        return outer.DoModal(Instance(), TEST_DIALOG, nullptr);
    }();
    EXPECT_EQ(innerResult, 0);
    EXPECT_EQ(inner.cancelCount, 1);
    EXPECT_EQ(outer.cancelCount, 0);
    EXPECT_EQ(result, 1);
}

// Runs the inner dialog over the outer one and the action in it; what it leaves open is cancelled.
void RunOver(TestDialog& outer, TestDialog& inner, const std::function<void()>& action)
{
    const ModalDriver driver([&](HWND window) {
        // A window manager may make the outer one active once more, so that the driver is given that, and may
        // do so before the dialog manager, on a busy machine, has come to showing the inner one.
        const ModalDriver innerDriver([&](HWND) {
            ShowWindow(inner.GetWindow(), SW_SHOW);
            action();
            if (inner.okCount + inner.cancelCount == 0)
                SendMessageW(inner.GetWindow(), WM_COMMAND, IDCANCEL, 0);
        });
        inner.DoModal(Instance(), TEST_INNER_DIALOG, window);
        SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
    });
    outer.DoModal(Instance(), TEST_DIALOG, nullptr);
}

// Another program's, or the task list's, which asks every window.
TEST(Dialog, ACloseBehindAnotherDialogIsThatOnes)
{
    TestDialog outer, inner;
    RunOver(outer, inner, [&] {
        SendMessageW(outer.GetWindow(), WM_CLOSE, 0, 0);
        EXPECT_EQ(outer.cancelCount, 0);
        EXPECT_TRUE(PumpUntil([&] { return inner.cancelCount == 1; }));
    });
    EXPECT_EQ(inner.cancelCount, 1);
    EXPECT_EQ(outer.cancelCount, 1) << "its own, later";
}

TEST(Dialog, CommandsDoNotReachItBehindAnotherDialog)
{
    TestDialog outer, inner;
    int seen = 0;
    outer.onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT*) {
        seen += message == WM_COMMAND && wParam == 4711;
        return false;
    };
    RunOver(outer, inner, [&] {
        HWND button = GetDlgItem(outer.GetWindow(), IDOK);
        for (const WPARAM id : {WPARAM{IDOK}, WPARAM{IDCANCEL}, WPARAM{4711}})
            SendMessageW(outer.GetWindow(), WM_COMMAND, id, 0);
        SendMessageW(outer.GetWindow(), WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(button));
        EXPECT_EQ(outer.okCount + outer.cancelCount, 0);
        EXPECT_EQ(seen, 0);
        // What a control of its own tells, of its focus for one, does reach it.
        SendMessageW(outer.GetWindow(), WM_COMMAND, 4711, reinterpret_cast<LPARAM>(button));
        EXPECT_EQ(seen, 1);
    });
}

// What the system was told of what holds the end of the session up.
std::vector<std::pair<HWND, std::wstring>> g_reasons;
int g_reasonsGone;

BOOL WINAPI KeepReason(HWND window, LPCWSTR reason)
{
    g_reasons.emplace_back(window, reason);
    return TRUE;
}
BOOL WINAPI DropReason(HWND)
{
    ++g_reasonsGone;
    return TRUE;
}

class SessionEnd : public testing::Test {
  protected:
    SessionEnd()
    {
        g_reasons.clear();
        g_reasonsGone = 0;
    }

    const ImportWatch<decltype(&ShutdownBlockReasonCreate)> m_create{&__imp_ShutdownBlockReasonCreate,
                                                                     KeepReason};
    const ImportWatch<decltype(&ShutdownBlockReasonDestroy)> m_destroy{&__imp_ShutdownBlockReasonDestroy,
                                                                       DropReason};
};

TEST_F(SessionEnd, IsAllowedWhereNothingIsUnsaved)
{
    TestDialog outer, inner;
    RunOver(outer, inner, [&] {
        EXPECT_EQ(SendMessageW(outer.GetWindow(), WM_QUERYENDSESSION, 0, 0), TRUE);
        EXPECT_EQ(SendMessageW(inner.GetWindow(), WM_QUERYENDSESSION, 0, 0), TRUE);
    });
    EXPECT_TRUE(g_reasons.empty());
    EXPECT_EQ(outer.sessionEnds + inner.sessionEnds, 0);
}

TEST_F(SessionEnd, IsRefusedByEveryWindowWithTheReason)
{
    TestDialog outer, inner;
    outer.unsaved = L"Something is not saved.";
    RunOver(outer, inner, [&] {
        EXPECT_EQ(SendMessageW(outer.GetWindow(), WM_QUERYENDSESSION, 0, 0), FALSE);
        EXPECT_EQ(SendMessageW(inner.GetWindow(), WM_QUERYENDSESSION, 0, 0), FALSE);
        ASSERT_EQ(g_reasons.size(), 2u);
        EXPECT_EQ(g_reasons[0], std::pair(outer.GetWindow(), std::wstring(L"Something is not saved.")));
        EXPECT_EQ(g_reasons[1].first, inner.GetWindow());
        SendMessageW(outer.GetWindow(), WM_ENDSESSION, FALSE, 0);
        EXPECT_EQ(g_reasonsGone, 1);
        EXPECT_EQ(outer.sessionEnds + inner.sessionEnds, 0);
    });
}

TEST_F(SessionEnd, TellsAllOpenDialogsFromTheInnermostOn)
{
    TestDialog outer, inner, closed;
    RunDialog(closed, [](HWND window) { SendMessageW(window, WM_CLOSE, 0, 0); });
    RunOver(outer, inner, [&] {
        SendMessageW(outer.GetWindow(), WM_ENDSESSION, TRUE, 0);
        EXPECT_EQ(outer.sessionEnds, 1);
        EXPECT_EQ(inner.sessionEnds, 1);
    });
    EXPECT_EQ(closed.sessionEnds, 0);
    closed.unsaved = L"Long gone";
    EXPECT_EQ(Dialog::UnsavedInOpenDialogs(), nullptr);
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
