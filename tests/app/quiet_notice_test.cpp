#include "app/quiet_notice.h"

#include <gtest/gtest.h>

#include "support/import_watch.h"
#include "support/test_windows.h"
#include "util/owners.h"

namespace {

// How often the notice has looked whether it can be told; it comes sooner than it asks for.
int g_looks = 0;
TIMERPROC g_look = nullptr;
decltype(&SetTimer) g_setTimer = nullptr;

void CALLBACK CountLook(HWND window, UINT message, UINT_PTR id, DWORD time)
{
    ++g_looks;
    g_look(window, message, id, time);
}

UINT_PTR WINAPI SetCountedTimer(HWND window, UINT_PTR id, UINT, TIMERPROC procedure)
{
    g_look = procedure;
    return g_setTimer(window, id, USER_TIMER_MINIMUM, CountLook);
}

class QuietNoticeTest : public testing::Test {
  protected:
    static constexpr UINT_PTR kMenuTimer = 1;

    void Tell()
    {
        g_looks = 0;
        g_setTimer = __imp_SetTimer;
        const ImportWatch<decltype(&SetTimer)> watch(&__imp_SetTimer, SetCountedTimer);
        m_notice.Tell(m_window.Handle());
    }
    // Until the notice has looked a few times, or has been told, or for as long as a test waits.
    void OpenMenu()
    {
        const UniqueMenu menu(CreatePopupMenu());
        ASSERT_TRUE(AppendMenuW(menu.get(), MF_STRING, 1, L"Item"));
        m_limit = GetTickCount64() + kWaitLimit;
        ASSERT_NE(SetTimer(m_window.Handle(), kMenuTimer, USER_TIMER_MINIMUM, nullptr), 0u);
        TrackPopupMenu(menu.get(), TPM_LEFTALIGN, 0, 0, 0, m_window.Handle(), nullptr);
        KillTimer(m_window.Handle(), kMenuTimer);
    }
    bool OnMessage(UINT message, WPARAM wParam)
    {
        const bool isOver = g_looks >= 5 || !m_answerer.Boxes().empty() || GetTickCount64() > m_limit;
        if (message == WM_TIMER && wParam == kMenuTimer && isOver)
            EndMenu();
        return false;
    }

    ULONGLONG m_limit = 0;
    const MessageBoxAnswerer m_answerer;
    TestParent m_window{
        [this](HWND, UINT message, WPARAM wParam, LPARAM, LRESULT*) { return OnMessage(message, wParam); }};
    std::wstring m_text = L"Something happened.";
    QuietNotice m_notice{[this] { return m_text; }};
};

TEST_F(QuietNoticeTest, IsToldBehindAMenuNotOverIt)
{
    Tell();
    ASSERT_NO_FATAL_FAILURE(OpenMenu());
    EXPECT_GE(g_looks, 5);
    EXPECT_TRUE(m_answerer.Boxes().empty());
    ASSERT_TRUE(PumpUntil([&] { return !m_answerer.Boxes().empty(); }));
    EXPECT_EQ(m_answerer.Boxes()[0].text, m_text);
    EXPECT_EQ(m_answerer.Boxes()[0].owner, m_window.Handle());
}

TEST_F(QuietNoticeTest, IsForgottenWhereThereIsNothingToTellAnyMore)
{
    m_text.clear();
    Tell();
    ASSERT_TRUE(PumpUntil([] { return g_looks == 1; }));
    EXPECT_FALSE(PumpUntil([] { return g_looks > 1; }, 200));
    EXPECT_TRUE(m_answerer.Boxes().empty());
}

} // namespace
