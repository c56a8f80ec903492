#include "ui/paint_wait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "support/test_windows.h"

namespace {

class PaintWait : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_NE(m_window.Handle(), nullptr);
        PumpMessages();
        m_paints = 0;
    }

    bool OnMessage(UINT message, LRESULT* result)
    {
        m_paints += message == WM_PAINT;
        if (message == WM_PAINT)
            m_pointer = GetCursor();
        m_keys += message == WM_KEYDOWN;
        m_timers += message == WM_TIMER;
        *result = 7;
        return message == WM_APP;
    }

    TestParent m_window{
        [this](HWND, UINT message, WPARAM, LPARAM, LRESULT* result) { return OnMessage(message, result); }};
    int m_paints = 0;
    HCURSOR m_pointer = nullptr; // when it last painted
    int m_keys = 0;
    int m_timers = 0;
};

TEST_F(PaintWait, PaintsWhatIsInvalid)
{
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
    PaintWhileWaiting(10);
    EXPECT_GE(m_paints, 1);
    EXPECT_FALSE(GetUpdateRect(m_window.Handle(), nullptr, FALSE));
}

TEST_F(PaintWait, LeavesKeysAndTimersInTheQueue)
{
    ASSERT_TRUE(PostMessageW(m_window.Handle(), WM_KEYDOWN, VK_F9, 0));
    ASSERT_TRUE(PostMessageW(m_window.Handle(), WM_TIMER, 1, 0));
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
    PaintWhileWaiting(30);
    EXPECT_EQ(m_keys, 0);
    EXPECT_EQ(m_timers, 0);
    PumpMessages();
    EXPECT_EQ(m_keys, 1);
    EXPECT_EQ(m_timers, 1);
}

TEST_F(PaintWait, KeepsTheEndOfTheProgram)
{
    PostQuitMessage(3);
    PaintWhileWaiting(30);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    while (message.message != WM_QUIT)
        ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.wParam, 3u);
}

TEST_F(PaintWait, AnswersWhatIsSent)
{
    std::atomic<DWORD_PTR> answer = 0;
    std::thread sender([&] {
        DWORD_PTR result = 0;
        SendMessageTimeoutW(m_window.Handle(), WM_APP, 0, 0, SMTO_NORMAL, kWaitLimit, &result);
        answer = result;
    });
    const ULONGLONG end = GetTickCount64() + kWaitLimit;
    while (!answer && GetTickCount64() < end)
        PaintWhileWaiting(20);
    sender.join();
    EXPECT_EQ(answer, 7u);
}

TEST_F(PaintWait, ShowsTheHourglassMeanwhile)
{
    HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    SetCursor(arrow);
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
    PaintWhileWaiting(1);
    EXPECT_EQ(m_pointer, LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_EQ(GetCursor(), arrow);
}

} // namespace
