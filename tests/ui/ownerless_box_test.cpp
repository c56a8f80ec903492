#include "ui/ownerless_box.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "support/test_windows.h"
#include "util/owners.h"

namespace {

HWND BoxOfThread()
{
    HWND box = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM found) {
            wchar_t name[16] = L"";
            GetClassNameW(window, name, 16);
            if (!IsWindowVisible(window) || wcscmp(name, L"#32770") != 0)
                return TRUE;
            *reinterpret_cast<HWND*>(found) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&box));
    return box;
}

// Looks at a box from within its own loop, then answers it.
class BoxVisitor {
  public:
    BoxVisitor(std::function<void(HWND box)> look, int answer) : m_look(std::move(look)), m_answer(answer)
    {
        s_visitor = this;
        m_timer = SetTimer(nullptr, 0, 10, OnTimer);
    }
    ~BoxVisitor()
    {
        KillTimer(nullptr, m_timer);
        s_visitor = nullptr;
        EXPECT_TRUE(m_came);
    }

  private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD)
    {
        HWND box = BoxOfThread();
        if (!box || !s_visitor || s_visitor->m_came)
            return;
        s_visitor->m_came = true;
        s_visitor->m_look(box);
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(s_visitor->m_answer), 0);
    }

    static inline BoxVisitor* s_visitor = nullptr;

    std::function<void(HWND)> m_look;
    int m_answer;
    UINT_PTR m_timer = 0;
    bool m_came = false;
};

TEST(OwnerlessBox, SaysWhatItIsGivenAndReturnsTheAnswer)
{
    const MessageBoxAnswerer answerer({IDYES, IDNO});
    EXPECT_EQ(ShowOwnerlessBox(L"Text", L"Caption", MB_YESNO | MB_ICONEXCLAMATION), IDYES);
    EXPECT_EQ(ShowOwnerlessBox(L"Text", L"Caption", MB_YESNO | MB_ICONEXCLAMATION), IDNO);
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Text");
    EXPECT_EQ(answerer.Boxes()[0].caption, L"Caption");
    EXPECT_EQ(answerer.Boxes()[0].owner, nullptr);
    EXPECT_EQ(answerer.Boxes()[0].answers, (std::vector<int>{IDYES, IDNO}));
}

TEST(OwnerlessBox, NothingElseCanBeWorkedWhileItStands)
{
    const TestParent one, other;
    const BoxVisitor visitor(
        [&](HWND box) {
            EXPECT_TRUE(IsWindowEnabled(box));
            EXPECT_FALSE(IsWindowEnabled(one.Handle()));
            EXPECT_FALSE(IsWindowEnabled(other.Handle()));
        },
        IDOK);
    ShowOwnerlessBox(L"Text", L"Caption", MB_OK);
    EXPECT_TRUE(IsWindowEnabled(one.Handle()));
    EXPECT_TRUE(IsWindowEnabled(other.Handle()));
}

// A window behind a dialog of its own, for one, and one that nobody sees.
TEST(OwnerlessBox, WhatWasDisabledStaysSoAndWhatIsHiddenIsLeftAlone)
{
    const TestParent disabled, hidden;
    EnableWindow(disabled.Handle(), FALSE);
    ShowWindow(hidden.Handle(), SW_HIDE);
    const BoxVisitor visitor([&](HWND) { EXPECT_TRUE(IsWindowEnabled(hidden.Handle())); }, IDOK);
    ShowOwnerlessBox(L"Text", L"Caption", MB_OK);
    EXPECT_FALSE(IsWindowEnabled(disabled.Handle()));
    EXPECT_TRUE(IsWindowEnabled(hidden.Handle()));
}

TEST(OwnerlessBox, TheWindowBehindItGetsTheKeyboardBack)
{
    const TestParent parent;
    ASSERT_TRUE(PumpUntil([&] { return GetActiveWindow() == parent.Handle(); }));
    const BoxVisitor visitor([](HWND) {}, IDOK);
    ShowOwnerlessBox(L"Text", L"Caption", MB_OK);
    EXPECT_EQ(GetActiveWindow(), parent.Handle());
}

// When the box is hidden the system looks for the window that becomes the active one.
TEST(OwnerlessBox, TheWindowBehindItIsEnabledBeforeItGoes)
{
    bool wasEnabled = false;
    const TestParent parent([&](HWND window, UINT message, WPARAM wParam, LPARAM, LRESULT*) {
        if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE)
            wasEnabled = IsWindowEnabled(window) != FALSE;
        return false;
    });
    PumpMessages();
    const BoxVisitor visitor([&](HWND) { wasEnabled = false; }, IDOK);
    ShowOwnerlessBox(L"Text", L"Caption", MB_OK);
    EXPECT_TRUE(wasEnabled);
}

TEST(OwnerlessBox, AMenuThatIsOpenBehindItIsEnded)
{
    const TestParent parent;
    const UniqueMenu menu(CreatePopupMenu());
    AppendMenuW(menu.get(), MF_STRING, 1, L"Item");
    const BoxVisitor visitor([](HWND) {}, IDOK);
    static bool s_shown;
    s_shown = false;
    const UINT_PTR timer = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
        if (!std::exchange(s_shown, true))
            ShowOwnerlessBox(L"Text", L"Caption", MB_OK);
    });
    EXPECT_EQ(TrackPopupMenuEx(menu.get(), TPM_RETURNCMD, 10, 10, parent.Handle(), nullptr), 0);
    KillTimer(nullptr, timer);
    EXPECT_TRUE(s_shown);
    EXPECT_TRUE(IsWindowEnabled(parent.Handle()));
}

TEST(OwnerlessBox, OneOverAnotherLeavesTheOuterOneStanding)
{
    const TestParent parent;
    HWND outer = nullptr;
    const BoxVisitor visitor(
        [&](HWND box) {
            outer = box;
            const MessageBoxAnswerer answerer;
            ShowOwnerlessBox(L"Inner", L"Caption", MB_OK);
            ASSERT_FALSE(answerer.Boxes().empty());
            EXPECT_EQ(answerer.Boxes()[0].text, L"Inner");
            EXPECT_TRUE(IsWindowEnabled(outer));
            EXPECT_FALSE(IsWindowEnabled(parent.Handle()));
        },
        IDOK);
    ShowOwnerlessBox(L"Outer", L"Caption", MB_OK);
    EXPECT_TRUE(IsWindowEnabled(parent.Handle()));
}

} // namespace
