// The editor's timer button and its ticks, sent as the system sends them, with the clock set by hand.
#include "editor_fixture.h"

#include <functional>

#include "support/import_watch.h"
#include "support/locked_store.h"

namespace {

constexpr UINT_PTR kTimer = 1;

UINT_PTR WINAPI NoTimerLeft(HWND, UINT_PTR, UINT, TIMERPROC)
{
    return 0;
}

class EntryEditorTimerTest : public EditorTest {
  protected:
    static void Press(const EditorWindow& editor)
    {
        HWND bar = editor.Item(IDC_EDITOR_BAR);
        RECT rect{};
        SendMessageW(bar, TB_GETRECT, CMD_TIMER, reinterpret_cast<LPARAM>(&rect));
        const LPARAM point = MAKELPARAM(rect.left + 5, (rect.top + rect.bottom) / 2);
        SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(bar, WM_LBUTTONUP, 0, point);
    }
    static bool IsChecked(const EditorWindow& editor)
    {
        return (editor.BarState(CMD_TIMER) & TBSTATE_CHECKED) != 0;
    }
    // So much later, a timer of the editor's ticks.
    void Tick(const EditorWindow& editor, int minutes = 1, UINT_PTR timer = kTimer)
    {
        m_now = m_now + Minutes(minutes);
        SetClock();
        SendMessageW(editor.Window(), WM_TIMER, timer, 0);
    }
    void SetClock()
    {
        SYSTEMTIME now{};
        ASSERT_TRUE(m_now.ToSystemTime(&now));
        m_clock.Set(now);
    }
    static TimeCount LastTick()
    {
        return {Own().GetNumber(L"Settings", L"Tmrl", 77), Own().GetNumber(L"Settings", L"Tmrh", 77)};
    }
    CEOID WriteOne()
    {
        EntryToWrite entry;
        entry.date = At(kTuesday);
        entry.duration = Minutes(10);
        entry.endTime = entry.date + entry.duration;
        entry.subject = L"Call";
        entry.type = L"Note";
        return Write(entry);
    }

    TimeCount m_now = At(kTuesday);
};

TEST_F(EntryEditorTimerTest, StartsStopped)
{
    RunNew([&](EditorWindow& editor) {
        EXPECT_TRUE(editor.BarState(CMD_TIMER) & TBSTATE_ENABLED);
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
        Tick(editor);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes") << "a timer that does not run has no ticks";
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(LastTick(), TimeCount());
    });
}

TEST_F(EntryEditorTimerTest, APressStartsIt)
{
    RunNew([&](EditorWindow& editor) {
        m_now = m_now + Minutes(2);
        SetClock();
        Press(editor);
        EXPECT_TRUE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On");
        EXPECT_EQ(editor.BarImage(CMD_TIMER), 3);
        EXPECT_EQ(LastTick(), m_now);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes") << "what passed before does not count";
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorTimerTest, ThreeTicksAddThreeMinutes)
{
    CEOID id = 0;
    Run(&id, [&](EditorWindow& editor) {
        Press(editor);
        for (const wchar_t* shown : {L"1 minute", L"2 minutes", L"3 minutes"}) {
            Tick(editor);
            EXPECT_EQ(editor.Text(IDC_DURATION), shown);
            EXPECT_EQ(LastTick(), m_now);
        }
        editor.Ok();
    });
    EXPECT_EQ(Read(id).duration, Minutes(3));
    EXPECT_EQ(Read(id).endTime, At(kTuesday) + Minutes(3));
    EXPECT_EQ(Read(id).date, At(kTuesday));
}

TEST_F(EntryEditorTimerTest, ATickAddsToTheDurationThatIsThere)
{
    CEOID id = WriteOne();
    Run(&id, [&](EditorWindow& editor) {
        Press(editor);
        EXPECT_FALSE(editor.SaveEnabled());
        Tick(editor, 5);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"15 minutes");
        EXPECT_TRUE(editor.SaveEnabled()) << "the entry is modified now";
        editor.Ok();
    });
    EXPECT_EQ(Read(id).duration, Minutes(15));
    EXPECT_EQ(Read(id).endTime, At(kTuesday) + Minutes(15));
}

TEST_F(EntryEditorTimerTest, ATickShowsItsDurationOverATypedOne)
{
    RunNew([&](EditorWindow& editor) {
        Press(editor);
        editor.Enter(IDC_DURATION, L"2 hours");
        Tick(editor);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"1 minute");
    });
}

TEST_F(EntryEditorTimerTest, OtherTimersAreNone)
{
    RunNew([&](EditorWindow& editor) {
        Press(editor);
        for (const UINT_PTR other : {UINT_PTR{0}, UINT_PTR{2}, UINT_PTR{CMD_TIMER}})
            Tick(editor, 1, other);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes");
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(LastTick(), At(kTuesday));
        Tick(editor);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"4 minutes") << "its own one counts the time since the last";
    });
}

TEST_F(EntryEditorTimerTest, ASecondPressStopsItAndTheDurationStays)
{
    CEOID id = 0;
    Run(&id, [&](EditorWindow& editor) {
        Press(editor);
        Tick(editor, 3);
        Press(editor);
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
        EXPECT_EQ(LastTick(), TimeCount());
        EXPECT_FALSE(KillTimer(editor.Window(), kTimer)) << "the window's timer has ended";
        Tick(editor);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"3 minutes") << "a tick that was still on its way";
        editor.Ok();
    });
    EXPECT_EQ(Read(id).duration, Minutes(3));
}

TEST_F(EntryEditorTimerTest, AThirdPressGoesOnFromThere)
{
    RunNew([&](EditorWindow& editor) {
        Press(editor);
        Tick(editor, 3);
        Press(editor);
        m_now = m_now + Minutes(60);
        SetClock();
        Press(editor);
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On");
        Tick(editor, 2);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"5 minutes");
    });
}

TEST_F(EntryEditorTimerTest, TheClockMayBeSetBack)
{
    CEOID id = WriteOne();
    Run(&id, [&](EditorWindow& editor) {
        Press(editor);
        Tick(editor, -4);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"6 minutes");
        Tick(editor, 1);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"7 minutes");
        Tick(editor, -60);
        editor.Ok();
    });
    EXPECT_EQ(Read(id).duration, Minutes(7) - Minutes(60)) << "even below zero";
    EXPECT_EQ(Read(id).endTime, At(kTuesday) - Minutes(53));
}

TEST_F(EntryEditorTimerTest, ASaveUnchecksTheButtonAndTheTicksGoOn)
{
    CEOID id = WriteOne();
    Run(&id, [&](EditorWindow& editor) {
        Press(editor);
        Tick(editor);
        editor.Command(CMD_SAVE);
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On") << "for it runs";
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(LastTick(), m_now);
        Tick(editor, 2);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"13 minutes");
        EXPECT_TRUE(editor.SaveEnabled()) << "a tick modifies the entry again";
        EXPECT_FALSE(IsChecked(editor));
        editor.Ok();
    });
    EXPECT_EQ(Read(id).duration, Minutes(13));
}

TEST_F(EntryEditorTimerTest, APressAfterASaveStopsTheTicks)
{
    CEOID id = WriteOne();
    Run(&id, [&](EditorWindow& editor) {
        Press(editor);
        Tick(editor);
        editor.Command(CMD_SAVE);
        Press(editor);
        EXPECT_FALSE(IsChecked(editor)) << "the press itself would have checked it";
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
        EXPECT_EQ(LastTick(), TimeCount());
        EXPECT_FALSE(KillTimer(editor.Window(), kTimer));
        Tick(editor);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"11 minutes");
        EXPECT_FALSE(editor.SaveEnabled());
        Press(editor);
        EXPECT_TRUE(IsChecked(editor)) << "and the next one starts them";
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On");
        Tick(editor);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"12 minutes");
    });
}

TEST_F(EntryEditorTimerTest, AnOkThatFailsUnchecksTheButtonAndTheTicksGoOn)
{
    const MessageBoxAnswerer boxes;
    CEOID id = WriteOne();
    Run(&id, [&](EditorWindow& editor) {
        Press(editor);
        Tick(editor);
        {
            const LockedStore trouble(m_store.Path());
            editor.Ok();
        }
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On");
        Tick(editor, 2);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"13 minutes");
        Press(editor);
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).duration, Minutes(13));
}

TEST_F(EntryEditorTimerTest, WithoutATimerOfTheSystemTheButtonComesBack)
{
    RunNew([&](EditorWindow& editor) {
        {
            const ImportWatch<decltype(&SetTimer)> none(&__imp_SetTimer, NoTimerLeft);
            Press(editor);
        }
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
        EXPECT_EQ(LastTick(), TimeCount());
        Press(editor);
        EXPECT_TRUE(IsChecked(editor)) << "the next press tries again";
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On");
    });
}

TEST_F(EntryEditorTimerTest, CancelUnchecksTheButtonOnceTheUserAgrees)
{
    const MessageBoxAnswerer boxes({IDNO, IDYES});
    RunNew([&](EditorWindow& editor) {
        Press(editor);
        Tick(editor);
        editor.Cancel();
        EXPECT_TRUE(IsChecked(editor)) << "No: all stays as it is";
        Tick(editor);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"2 minutes");
        editor.Cancel();
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(LastTick(), m_now) << "nothing is stored";
    });
    EXPECT_EQ(boxes.Boxes().size(), 2u);
    EXPECT_EQ(Count(), 0u);
}

TEST_F(EntryEditorTimerTest, ATickThatAnEarlierEditorLeftIsNotTakenUp)
{
    RunNew([&](EditorWindow& editor) {
        Press(editor);
        editor.Ok();
    });
    EXPECT_EQ(LastTick(), At(kTuesday)) << "closing leaves it behind";
    RunNew([&](EditorWindow& editor) {
        EXPECT_EQ(LastTick(), TimeCount());
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
        Tick(editor, 60);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes");
    });
}

TEST_F(EntryEditorTimerTest, OpeningARecordClearsTheLastTickToo)
{
    CEOID id = WriteOne();
    Own().SetNumber(L"Settings", L"Tmrh", 5);
    Own().SetNumber(L"Settings", L"Tmrl", 6);
    Run(&id, [](EditorWindow& editor) {
        EXPECT_EQ(LastTick(), TimeCount());
        EXPECT_EQ(editor.Text(IDC_DURATION), L"10 minutes");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

// The period of the timer that the press has set is cut short from outside; the ticks are the system's own.
TEST_F(EntryEditorTimerTest, TheSystemsTicksArrive)
{
    RunNew([&](EditorWindow& editor) {
        Press(editor);
        m_now = m_now + Minutes(3);
        SetClock();
        ASSERT_EQ(SetTimer(editor.Window(), kTimer, 10, nullptr), kTimer);
        EXPECT_TRUE(PumpUntil([&] { return editor.Text(IDC_DURATION) == L"3 minutes"; }));
        EXPECT_TRUE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorTimerTest, TheKeyboardPressesTheButton)
{
    RunNew([&](EditorWindow& editor) {
        editor.Focus(IDC_EDITOR_BAR);
        editor.Key(VK_HOME);
        editor.Key(VK_SPACE);
        EXPECT_TRUE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On");
        editor.Key(VK_SPACE);
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
    });
}

TEST_F(EntryEditorTimerTest, TheCommandAloneMovesTheButtonToo)
{
    RunNew([&](EditorWindow& editor) {
        editor.Command(CMD_TIMER);
        EXPECT_TRUE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"On");
        editor.Command(CMD_TIMER);
        EXPECT_FALSE(IsChecked(editor));
        EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

decltype(&SetTimer) g_setTimer = nullptr;

UINT_PTR WINAPI SetShortTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    return g_setTimer(window, id, period == 60'000 ? USER_TIMER_MINIMUM : period, procedure);
}

// The system's own ticks, which would come for as long as the timer is there.
TEST_F(EntryEditorTimerTest, EndsWithItsWindow)
{
    g_setTimer = __imp_SetTimer;
    const ImportWatch<decltype(&SetTimer)> watch(&__imp_SetTimer, SetShortTimer);
    const MessageBoxAnswerer answerer({IDYES});
    for (const int button : {IDOK, IDCANCEL}) {
        RunNew([&](EditorWindow& editor) {
            Press(editor);
            m_now = m_now + Minutes(5);
            SetClock();
            EXPECT_TRUE(PumpUntil([&] { return LastTick() == m_now; }));
            editor.Command(button);
        });
        const TimeCount end = LastTick();
        m_now = m_now + Minutes(5);
        SetClock();
        EXPECT_FALSE(PumpUntil([&] { return LastTick() != end; }, 200)) << button;
    }
}

} // namespace
