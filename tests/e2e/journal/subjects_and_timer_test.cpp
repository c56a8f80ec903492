// A person keeps a list of subjects, takes one for an entry, and has the entry timed.
#include <gtest/gtest.h>

#include "e2e/journal/journal_window.h"
#include "util/time_count.h"

namespace {

class SubjectsAndTimer : public JournalWindowTest {
  protected:
    using Texts = std::vector<std::wstring>;

    HWND WaitForSubjects() const
    {
        HWND dialog = WaitForDialog(m_journal.Id(), L"Quick Subjects");
        return dialog && Activate(dialog) ? dialog : nullptr;
    }
    static Texts Subjects(HWND dialog) { return ListBoxItems(Control(dialog, IDC_QUICK_SUBJECT_LIST)); }
    // Types a subject over what is selected, and adds it by its key.
    void Add(HWND dialog, const std::wstring& subject)
    {
        const size_t before = Subjects(dialog).size();
        ASSERT_TRUE(Activate(dialog)); // an event of the menu that it was opened from may be late
        TypeText(subject);
        ASSERT_TRUE(WaitFor([&] { return TextOf(Control(dialog, IDC_QUICK_SUBJECT)) == subject; }));
        ASSERT_TRUE(Activate(dialog));
        PressKeys({VK_MENU, 'A'});
        ASSERT_TRUE(WaitFor([&] { return Subjects(dialog).size() == before + 1; }));
    }
    // A minute is too long to wait for, so the last tick is put back. The next one is the system's own: the
    // timer that the button has set is given a short period, once nothing can come between.
    void LetMinutesPass(HWND editor, unsigned minutes)
    {
        constexpr UINT kLong = 60'000, kShort = 100;
        SetPeriod(editor, kLong);
        const auto high = NumberSetting(L"Settings", L"Tmrh"), low = NumberSetting(L"Settings", L"Tmrl");
        ASSERT_TRUE(high && low);
        const TimeCount last(TimeCount(*low, *high).Units() - minutes * TimeCount::kUnitsPerMinute);
        ASSERT_TRUE(StoreSetting(L"Settings", L"Tmrh", last.High()));
        ASSERT_TRUE(StoreSetting(L"Settings", L"Tmrl", last.Low()));
        SetPeriod(editor, kShort);
    }
    static void SetPeriod(HWND editor, UINT period)
    {
        constexpr UINT_PTR kTimer = 1;
        const UniqueKernelHandle process = ProcessOf(editor);
        ASSERT_EQ(
            CallInProcess(process.get(), L"user32.dll", "SetTimer", {Argument(editor), kTimer, period, 0}),
            kTimer);
    }
    HWND OpenNew()
    {
        PressKeys({VK_CONTROL, 'N'});
        return WaitForEditor();
    }
};

TEST_F(SubjectsAndTimer, TheListIsKeptByKeyboardAndOfferedInTheEditor)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    PressKeys({VK_MENU, 'E'});
    ASSERT_NE(WaitForPopup(m_journal.Id()), nullptr);
    PressKey('S');
    HWND dialog = WaitForSubjects();
    ASSERT_NE(dialog, nullptr);
    Add(dialog, L"Walk");
    Add(dialog, L"Gespräch");
    EXPECT_EQ(Subjects(dialog), (Texts{L"Gespräch", L"Walk"}));
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_EQ(NumberSetting(L"Settings", L"scount"), 2u);
    EXPECT_EQ(TextSetting(L"Options", L"subj0"), L"Walk");
    EXPECT_EQ(TextSetting(L"Options", L"subj1"), L"Gespräch");

    ASSERT_TRUE(Activate(Window()));
    HWND editor = OpenNew();
    ASSERT_NE(editor, nullptr);
    HWND box = Control(editor, IDC_SUBJECT);
    EXPECT_EQ(ComboItems(box), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>", L"Gespräch", L"Walk"}));

    // The editor opens the same list; what is deleted there is gone from its box.
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    ASSERT_TRUE(WaitFor([&] { return IsChild(box, FocusOf(editor)); }));
    PressKey(VK_F4);
    ASSERT_TRUE(WaitFor([&] { return Send(box, CB_GETDROPPEDSTATE) != 0; }));
    PressKey(VK_UP);
    ASSERT_TRUE(WaitFor([&] { return Send(box, CB_GETCURSEL) == 0; }));
    PressKey(VK_RETURN);
    dialog = WaitForSubjects();
    ASSERT_NE(dialog, nullptr);
    PressKey(VK_TAB);
    PressKey(VK_END); // some systems only select where the caret is
    PressKey(VK_END);
    ASSERT_TRUE(WaitFor([&] { return Send(Control(dialog, IDC_QUICK_SUBJECT_LIST), LB_GETCURSEL) == 1; }));
    PressKeys({VK_MENU, 'D'});
    const RemoteMessageBox question = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(question);
    EXPECT_EQ(question.Text(), L"Delete?");
    EXPECT_EQ(question.Caption(), L"Confirm");
    ASSERT_TRUE(question.Answer(IDYES));
    EXPECT_TRUE(WaitFor([&] { return Subjects(dialog) == Texts{L"Gespräch"}; }));
    PressKey(VK_RETURN);
    ASSERT_TRUE(WaitUntilGone(dialog));
    EXPECT_TRUE(WaitFor([&] { return ComboItems(box).size() == 3; }));

    ASSERT_TRUE(Activate(editor));
    EXPECT_TRUE(ChooseComboItem(box, 2));
    PressKeys({VK_CONTROL, 'S'});
    EXPECT_TRUE(WaitFor(
        [&] { return StoreReader(m_store.Path()).QueryOne("SELECT subject FROM journal") == "Gespräch"; }));
    PressButton(editor, IDCANCEL);
    const RemoteMessageBox changes = WaitForMessageBox(m_journal.Id());
    ASSERT_TRUE(changes);
    EXPECT_TRUE(changes.Answer(IDYES));
    EXPECT_TRUE(WaitUntilGone(editor));
    EXPECT_TRUE(m_journal.Close());
}

TEST_F(SubjectsAndTimer, TheTimerMeasuresAndASaveDoesNotStopIt)
{
    ASSERT_NE(m_journal.Start(), nullptr);
    HWND editor = OpenNew();
    ASSERT_NE(editor, nullptr);
    const RemoteToolbar bar(Control(editor, IDC_EDITOR_BAR));
    HWND duration = Control(editor, IDC_DURATION);
    ASSERT_TRUE(Click(bar.BodyPoint(CMD_TIMER)));
    ASSERT_TRUE(WaitFor([&] { return bar.Text(CMD_TIMER) == L"On"; }));
    EXPECT_TRUE(bar.IsChecked(CMD_TIMER));
    LetMinutesPass(editor, 3);
    EXPECT_TRUE(WaitFor([&] { return TextOf(duration) == L"3 minutes"; }));
    EXPECT_TRUE(bar.IsEnabled(CMD_SAVE));

    PressKeys({VK_CONTROL, 'S'});
    EXPECT_TRUE(WaitFor([&] { return !bar.IsChecked(CMD_TIMER); }));
    EXPECT_EQ(bar.Text(CMD_TIMER), L"On");
    LetMinutesPass(editor, 3);
    EXPECT_TRUE(WaitFor([&] { return TextOf(duration) == L"6 minutes"; })) << "the ticks go on";

    ASSERT_TRUE(Click(bar.BodyPoint(CMD_TIMER)));
    EXPECT_TRUE(WaitFor([&] { return bar.Text(CMD_TIMER) == L"Off"; }));
    EXPECT_FALSE(bar.IsChecked(CMD_TIMER));
    EXPECT_EQ(NumberSetting(L"Settings", L"Tmrh"), 0u);
    EXPECT_EQ(NumberSetting(L"Settings", L"Tmrl"), 0u);
    PressButton(editor, IDOK);
    ASSERT_TRUE(WaitUntilGone(editor));
    const StoreReader store(m_store.Path());
    EXPECT_EQ(store.QueryOne("SELECT duration / 600000000 FROM journal"), "6");
    EXPECT_EQ(store.QueryOne("SELECT end_time - date = duration FROM journal"), "1");
    EXPECT_TRUE(m_journal.Close());
}

} // namespace
