#include "ui/gathered.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/test_windows.h"

namespace {

constexpr UINT kMsgAsk = WM_APP;

class GatheredTest : public testing::Test {
  protected:
    void Ask(int times)
    {
        for (int i = 0; i < times; ++i)
            m_gathered.Ask(m_window.Handle());
    }

    int m_done = 0;
    int m_keysBefore = 0, m_keys = 0, m_released = 0;
    int m_flood = 0; // messages follow each other until the work was done so often
    ULONGLONG m_floodEnd = 0;
    bool m_asksAgain = false;
    TestParent m_window{[this](HWND window, UINT message, WPARAM, LPARAM, LRESULT*) {
        if (message == kMsgAsk)
            m_gathered.Ask(window);
        if (message == kMsgAsk && m_done < m_flood && GetTickCount64() < m_floodEnd)
            PostMessageW(window, kMsgAsk, 0, 0);
        m_released += message == WM_KEYUP;
        m_keys += message == WM_KEYDOWN;
        return false;
    }};
    Gathered m_gathered{[this] {
        ++m_done;
        m_keysBefore = m_keys;
        if (m_asksAgain)
            m_gathered.Ask(m_window.Handle());
        m_asksAgain = false;
    }};
};

TEST_F(GatheredTest, DoesTheFirstAtOnceAndAllFurtherTogether)
{
    Ask(1);
    EXPECT_EQ(m_done, 1);
    Ask(500);
    EXPECT_EQ(m_done, 1);
    ASSERT_TRUE(PumpUntil([&] { return m_done == 2; }));
    // No timer goes on when nothing is asked for.
    Ask(1);
    ASSERT_TRUE(PumpUntil([&] { return m_done == 3; }));
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, m_window.Handle(), WM_TIMER, WM_TIMER, PM_NOREMOVE));
}

TEST_F(GatheredTest, DoesManyMessagesWithinASecond)
{
    const ULONGLONG start = GetTickCount64();
    for (int i = 0; i < 500; ++i)
        ASSERT_TRUE(PostMessageW(m_window.Handle(), kMsgAsk, 0, 0));
    ASSERT_TRUE(PumpUntil([&] { return m_done == 2; }));
    EXPECT_LT(GetTickCount64() - start, 5000u);
    PumpMessages();
    EXPECT_EQ(m_done, 2);
}

TEST_F(GatheredTest, DoesWhatTheWorkItselfAsksForLater)
{
    m_asksAgain = true;
    Ask(1);
    EXPECT_EQ(m_done, 1);
    EXPECT_TRUE(PumpUntil([&] { return m_done == 2; }));
}

TEST_F(GatheredTest, LetsKeysGoFirst)
{
    SetForegroundWindow(m_window.Handle());
    SetFocus(m_window.Handle());
    INPUT key{};
    key.type = INPUT_KEYBOARD;
    key.ki.wVk = VK_F8;
    // Until the key is in the queue, which is not told otherwise.
    ASSERT_EQ(SendInput(1, &key, sizeof key), 1u);
    const auto keyWaits = [] { return HIWORD(GetQueueStatus(QS_KEY)) != 0; };
    const ULONGLONG end = GetTickCount64() + kWaitLimit;
    while (!keyWaits() && GetTickCount64() < end)
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_KEY);
    ASSERT_TRUE(keyWaits());
    Ask(1);
    EXPECT_EQ(m_done, 0);
    key.ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(1, &key, sizeof key);
    ASSERT_TRUE(PumpUntil([&] { return m_done == 1; }));
    EXPECT_EQ(m_keysBefore, 1);
    EXPECT_TRUE(PumpUntil([&] { return m_released == 1; }));
}

// As long as a neighbour writes faster than what it tells is handled.
TEST_F(GatheredTest, WaitsForNoEndOfMessages)
{
    m_flood = 4;
    m_floodEnd = GetTickCount64() + kWaitLimit;
    ASSERT_TRUE(PostMessageW(m_window.Handle(), kMsgAsk, 0, 0));
    PumpMessages();
    EXPECT_EQ(m_done, 4);
}

TEST_F(GatheredTest, ForgetsWhatIsCancelled)
{
    Ask(2);
    m_gathered.Cancel();
    Ask(1);
    ASSERT_TRUE(PumpUntil([&] { return m_done == 2; }));
}

TEST(GatheredOfAWindow, GoesWithIt)
{
    int done = 0;
    Gathered gathered([&] { ++done; });
    {
        const TestParent window;
        gathered.Ask(window.Handle());
        gathered.Ask(window.Handle());
    }
    const TestParent next;
    EXPECT_EQ(done, 1);
    gathered.Ask(next.Handle());
    EXPECT_TRUE(PumpUntil([&] { return done == 2; }));
}

} // namespace
