#include "ui/window_timer.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/import_watch.h"
#include "support/test_windows.h"

namespace {

UINT_PTR WINAPI RefuseTimer(HWND, UINT_PTR, UINT, TIMERPROC)
{
    return 0;
}

class WindowTimerTest : public testing::Test {
  protected:
    bool WorksOn(DWORD limit = kWaitLimit)
    {
        const int before = m_done;
        return PumpUntil([&] { return m_done > before + 1; }, limit);
    }

    int m_done = 0;
    TestParent m_window, m_other;
    std::optional<WindowTimer> m_timer{std::in_place, [this] { ++m_done; }};
};

TEST_F(WindowTimerTest, WorksAgainAndAgainUntilItIsStopped)
{
    EXPECT_EQ(m_timer->Window(), nullptr);
    ASSERT_TRUE(m_timer->Start(m_window.Handle(), USER_TIMER_MINIMUM));
    EXPECT_EQ(m_done, 0) << "in messages";
    EXPECT_EQ(m_timer->Window(), m_window.Handle());
    EXPECT_TRUE(WorksOn());
    m_timer->Stop();
    EXPECT_EQ(m_timer->Window(), nullptr);
    EXPECT_FALSE(WorksOn(300));
}

TEST_F(WindowTimerTest, BeginsAnewWithItsLastPeriodAndWindow)
{
    ASSERT_TRUE(m_timer->Start(m_window.Handle(), 60'000));
    ASSERT_TRUE(m_timer->Start(m_window.Handle(), USER_TIMER_MINIMUM));
    EXPECT_TRUE(WorksOn());
    ASSERT_TRUE(m_timer->Start(m_other.Handle(), 60'000));
    EXPECT_EQ(m_timer->Window(), m_other.Handle());
    EXPECT_FALSE(WorksOn(300)) << "nothing comes from the window before";
}

TEST_F(WindowTimerTest, EndsWithItsOwner)
{
    ASSERT_TRUE(m_timer->Start(m_window.Handle(), USER_TIMER_MINIMUM));
    m_timer.reset();
    EXPECT_FALSE(WorksOn(300));
}

TEST_F(WindowTimerTest, GoesOnAsItDidWhereItIsRefused)
{
    ASSERT_TRUE(m_timer->Start(m_window.Handle(), USER_TIMER_MINIMUM));
    {
        const ImportWatch<decltype(&SetTimer)> none(&__imp_SetTimer, RefuseTimer);
        EXPECT_FALSE(m_timer->Start(m_other.Handle(), 60'000));
    }
    EXPECT_EQ(m_timer->Window(), m_window.Handle());
    EXPECT_TRUE(WorksOn());
}

} // namespace
