// What reaches a dialog, and what it makes of it: its buttons and keys, messages, another dialog over it, the
// end of the session.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "mervane/file/store_waiter.h"
#include "support/import_watch.h"
#include "support/test_windows.h"
#include "ui/dialog_fixture.h"
#include "ui/ui_test_resource.h"

namespace {

void PressKey(HWND dialog, WPARAM key)
{
    PostMessageW(GetFocus() ? GetFocus() : dialog, WM_KEYDOWN, key, 1);
}

} // namespace

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
        seen += message == WM_COMMAND && LOWORD(wParam) == 4711;
        return false;
    };
    RunOver(outer, inner, [&] {
        HWND button = GetDlgItem(outer.GetWindow(), IDOK);
        for (const WPARAM id : {WPARAM{IDOK}, WPARAM{IDCANCEL}, WPARAM{4711}})
            SendMessageW(outer.GetWindow(), WM_COMMAND, id, 0);
        const auto tell = [&](WPARAM id, WORD notification) {
            SendMessageW(outer.GetWindow(), WM_COMMAND, MAKEWPARAM(id, notification),
                         reinterpret_cast<LPARAM>(button));
        };
        for (const WPARAM id : {WPARAM{IDOK}, WPARAM{4711}})
            tell(id, BN_CLICKED);
        EXPECT_EQ(outer.okCount + outer.cancelCount, 0);
        EXPECT_EQ(seen, 0);
        // What a control of its own tells, of its focus for one, does reach it.
        tell(4711, BN_KILLFOCUS);
        EXPECT_EQ(seen, 1);
    });
}

// Sent by another program, whose message is answered within the wait.
TEST(Dialog, PutsOffWhatAsksForWorkWhileAWriteWaits)
{
    static HWND s_window;
    static UINT s_message;
    static WPARAM s_wParam;
    for (const auto& [message, wParam] : {std::pair<UINT, WPARAM>(WM_CLOSE, 0), {WM_COMMAND, IDCANCEL}}) {
        TestDialog dialog;
        s_message = message;
        s_wParam = wParam;
        RunDialog(dialog, [&dialog](HWND window) {
            s_window = window;
            SetStoreWaiter([](DWORD) { SendMessageW(s_window, s_message, s_wParam, 0); });
            mervane::WaitForStore(1);
            SetStoreWaiter(nullptr);
            EXPECT_EQ(dialog.cancelCount, 0);
            EXPECT_TRUE(PumpUntil([&] { return dialog.cancelCount == 1; })) << "it comes again";
        });
    }
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
