#include "editor/entry_timer.h"

#include <string>
#include <vector>

#include "editor_fixture.h"
#include "support/import_watch.h"

namespace {

// What the timer asked of the system for its window, in its order.
std::vector<std::wstring> g_calls;
HWND g_window = nullptr;
UINT_PTR g_answer = 0;

UINT_PTR WINAPI WatchedSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    if (window == g_window)
        g_calls.push_back(L"SetTimer " + std::to_wstring(id) + L" " + std::to_wstring(period) +
                          (procedure ? L" with a procedure" : L""));
    return g_answer;
}

BOOL WINAPI WatchedKillTimer(HWND window, UINT_PTR id)
{
    if (window == g_window)
        g_calls.push_back(L"KillTimer " + std::to_wstring(id));
    return TRUE;
}

LSTATUS WINAPI WatchedSetValue(HKEY, const wchar_t* name, DWORD, DWORD type, const BYTE* data, DWORD size)
{
    EXPECT_EQ(type, DWORD{REG_DWORD});
    EXPECT_EQ(size, sizeof(DWORD));
    g_calls.push_back(std::wstring(name) + L"=" + std::to_wstring(*reinterpret_cast<const DWORD*>(data)));
    return ERROR_SUCCESS;
}

using Calls = std::vector<std::wstring>;

Calls TakeCalls()
{
    return std::exchange(g_calls, {});
}

std::wstring High(TimeCount time)
{
    return L"Tmrh=" + std::to_wstring(time.High());
}
std::wstring Low(TimeCount time)
{
    return L"Tmrl=" + std::to_wstring(time.Low());
}

class EntryTimerTest : public testing::Test {
  protected:
    static void StoreTick(TimeCount time)
    {
        Own().SetNumber(L"Settings", L"Tmrh", time.High());
        Own().SetNumber(L"Settings", L"Tmrl", time.Low());
    }
    static TimeCount StoredTick()
    {
        return {Own().GetNumber(L"Settings", L"Tmrl", 77), Own().GetNumber(L"Settings", L"Tmrh", 77)};
    }
    bool Start() { return m_timer.Start(m_parent.Handle(), &Own()); }
    void Stop() { m_timer.Stop(m_parent.Handle(), &Own()); }
    void PassMinutes(int minutes)
    {
        SYSTEMTIME now;
        ASSERT_TRUE((At(kTuesday) + Minutes(minutes)).ToSystemTime(&now));
        m_clock.Set(now);
    }

    TestRegistry m_registry;
    ScopedClockForTesting m_clock{kTuesday};
    TestParent m_parent;
    EntryTimer m_timer;
};

// The same with the system's part played by the test.
class EntryTimerCallsTest : public EntryTimerTest {
  protected:
    EntryTimerCallsTest()
    {
        g_window = m_parent.Handle();
        g_answer = 1;
        g_calls.clear();
    }

    const ImportWatch<decltype(&SetTimer)> m_set{&__imp_SetTimer, WatchedSetTimer};
    const ImportWatch<decltype(&KillTimer)> m_kill{&__imp_KillTimer, WatchedKillTimer};
    const ImportWatch<decltype(&RegSetValueExW)> m_store{&__imp_RegSetValueExW, WatchedSetValue};
};

TEST_F(EntryTimerCallsTest, StartsAMinutesTimerAndThenStoresTheTime)
{
    ASSERT_TRUE(Start());
    EXPECT_EQ(TakeCalls(), (Calls{L"SetTimer 1 60000", High(At(kTuesday)), Low(At(kTuesday))}));
}

TEST_F(EntryTimerCallsTest, ClearsTheTimeBeforeItEndsTheTimer)
{
    Stop();
    EXPECT_EQ(TakeCalls(), (Calls{L"Tmrh=0", L"Tmrl=0", L"KillTimer 1"}));
}

TEST_F(EntryTimerCallsTest, KeepsTheIdentifierThatTheSystemGives)
{
    g_answer = 7;
    ASSERT_TRUE(Start());
    EXPECT_TRUE(m_timer.IsTick(7));
    EXPECT_FALSE(m_timer.IsTick(1));
    TakeCalls();
    Stop();
    EXPECT_EQ(TakeCalls().back(), L"KillTimer 7");
    ASSERT_TRUE(Start());
    EXPECT_EQ(TakeCalls().front(), L"SetTimer 7 60000");
}

TEST_F(EntryTimerCallsTest, WithoutATimerOfTheSystemItDoesNotRun)
{
    g_answer = 0;
    EXPECT_FALSE(Start());
    EXPECT_FALSE(m_timer.IsRunning());
    EXPECT_EQ(TakeCalls(), Calls{L"SetTimer 1 60000"}) << "nothing is stored";
    g_answer = 1;
    ASSERT_TRUE(Start());
    EXPECT_EQ(TakeCalls().front(), L"SetTimer 1 60000") << "asked for under its own identifier";
}

TEST_F(EntryTimerCallsTest, ATickStoresTheUpperHalfFirst)
{
    EditorTimes times;
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(TakeCalls(), (Calls{High(At(kTuesday)), Low(At(kTuesday))}));
}

TEST_F(EntryTimerTest, HasNoTicksBeforeItRunsNorAfter)
{
    EXPECT_FALSE(m_timer.IsRunning());
    EXPECT_FALSE(m_timer.IsTick(1));
    ASSERT_TRUE(Start());
    EXPECT_TRUE(m_timer.IsRunning());
    EXPECT_TRUE(m_timer.IsTick(1));
    for (const UINT_PTR other : {UINT_PTR{0}, UINT_PTR{2}, ~UINT_PTR{0}})
        EXPECT_FALSE(m_timer.IsTick(other)) << other;
    Stop();
    EXPECT_FALSE(m_timer.IsRunning());
    EXPECT_FALSE(m_timer.IsTick(1));
}

TEST_F(EntryTimerTest, TheWindowsTimerIsThereWhileItRuns)
{
    ASSERT_TRUE(Start());
    Stop();
    EXPECT_FALSE(KillTimer(m_parent.Handle(), 1)) << "it was ended";
    ASSERT_TRUE(Start());
    EXPECT_TRUE(KillTimer(m_parent.Handle(), 1));
}

TEST_F(EntryTimerTest, StartStoresTheLocalTime)
{
    StoreTick(TimeCount(5));
    ASSERT_TRUE(Start());
    EXPECT_EQ(StoredTick(), At(kTuesday));
}

TEST_F(EntryTimerTest, StopClearsWhatIsStored)
{
    StoreTick(At(kTuesday));
    Stop();
    EXPECT_EQ(StoredTick(), TimeCount());
}

TEST_F(EntryTimerTest, ATickAddsTheTimeThatHasPassed)
{
    EditorTimes times;
    times.start = times.end = At(kTuesday);
    times.duration = Minutes(5);
    // Not a whole minute: what has passed counts, not what a tick should take.
    const TimeCount passed = Minutes(1) + TimeCount(123'456'789);
    StoreTick(At(kTuesday) - passed);
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(times.duration, Minutes(5) + passed);
    EXPECT_EQ(times.end, At(kTuesday) + Minutes(5) + passed);
    EXPECT_EQ(times.start, At(kTuesday));
    EXPECT_EQ(StoredTick(), At(kTuesday));
}

TEST_F(EntryTimerTest, BothHalvesOfTheLastTickCount)
{
    for (const TimeCount passed : {TimeCount(1), TimeCount(0, 1), TimeCount(0xFFFFFFFF, 2)}) {
        EditorTimes times;
        StoreTick(At(kTuesday) - passed);
        m_timer.AddTimeSinceLastTick(&Own(), &times);
        EXPECT_EQ(times.duration, passed);
    }
}

TEST_F(EntryTimerTest, AClockThatWasSetBackShrinksTheDuration)
{
    EditorTimes times;
    times.start = At(kTuesday);
    times.duration = Minutes(30);
    StoreTick(At(kTuesday) + Minutes(20));
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(times.duration, Minutes(10));
    EXPECT_EQ(times.end, At(kTuesday) + Minutes(10));
    EXPECT_EQ(StoredTick(), At(kTuesday));
}

TEST_F(EntryTimerTest, TheDurationMayEvenPassBelowZero)
{
    EditorTimes times;
    times.start = At(kTuesday);
    StoreTick(At(kTuesday) + Minutes(60));
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(times.duration.Units(), ~uint64_t{60 * 600'000'000ull} + 1);
    EXPECT_EQ(times.end, At(kTuesday) - Minutes(60));
    StoreTick(At(kTuesday) - Minutes(61));
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(times.duration, Minutes(1)) << "and comes back as it went";
}

// The editor of another window, over another store, clears the settings that all windows have.
TEST_F(EntryTimerTest, GoesOnWithItsOwnTickWhereAnotherWindowHasClearedIt)
{
    ASSERT_TRUE(Start());
    PassMinutes(1);
    StoreTick(TimeCount());
    EditorTimes times;
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(times.duration, Minutes(1));
    EXPECT_EQ(StoredTick(), At(kTuesday) + Minutes(1));
}

TEST_F(EntryTimerTest, GoesOnWithItsOwnTickWhereAnotherWindowHasStoredALaterOne)
{
    ASSERT_TRUE(Start());
    StoreTick(At(kTuesday) + Minutes(2));
    PassMinutes(3);
    EditorTimes times;
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(times.duration, Minutes(3));
}

TEST_F(EntryTimerTest, AMissingLastTickReadsAsZero)
{
    EditorTimes times;
    m_timer.AddTimeSinceLastTick(&Own(), &times);
    EXPECT_EQ(times.duration, At(kTuesday));
    EXPECT_EQ(StoredTick(), At(kTuesday));
}

} // namespace
