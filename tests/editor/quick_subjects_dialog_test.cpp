#include "editor/quick_subjects_dialog.h"

#include "editor/quick_subjects.h"
#include "editor_fixture.h"
#include "ui/scale.h"
#include "ui/work_area.h"

namespace {

using Texts = std::vector<std::wstring>;

constexpr int kEdit = 1402, kList = 1029, kAdd = 1026, kModify = 1027, kDelete = 1031;

class QuickSubjectsDialogTest : public testing::Test {
  protected:
    // Works the dialog; what the action leaves open is closed with Cancel. The dialog's answer.
    int Run(const std::function<void(EditorWindow&)>& action, HWND owner = nullptr)
    {
        ModalDriver driver([&](HWND window) {
            ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
            EditorWindow dialog(window);
            action(dialog);
            if (IsWindowVisible(window))
                dialog.Cancel();
        });
        const int result = RunQuickSubjects(owner);
        EXPECT_TRUE(driver.Ran());
        return result;
    }
    // The same, then OK; the subjects as they are stored.
    Texts Stored(const std::function<void(EditorWindow&)>& action)
    {
        EXPECT_EQ(Run([&](EditorWindow& dialog) {
                      action(dialog);
                      dialog.Ok();
                  }),
                  1);
        return ReadQuickSubjects(App());
    }
    static void Store(const Texts& subjects) { StoreQuickSubjects(&App(), subjects); }

    static Texts Items(const EditorWindow& dialog)
    {
        Texts items;
        for (LRESULT i = 0; i < dialog.Ask(kList, LB_GETCOUNT); ++i) {
            wchar_t text[300];
            dialog.Ask(kList, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
            items.emplace_back(text);
        }
        return items;
    }
    static LRESULT Selected(const EditorWindow& dialog) { return dialog.Ask(kList, LB_GETCURSEL); }
    // As a user does: the list gets the focus and the item is clicked.
    static void Select(const EditorWindow& dialog, int item)
    {
        RECT rect{};
        dialog.Ask(kList, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect));
        const LPARAM point = MAKELPARAM(rect.left + 5, (rect.top + rect.bottom) / 2);
        SendMessageW(dialog.Item(kList), WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(dialog.Item(kList), WM_LBUTTONUP, 0, point);
        EXPECT_EQ(Selected(dialog), item);
    }
    static void Press(const EditorWindow& dialog, int button)
    {
        ASSERT_TRUE(IsWindowEnabled(dialog.Item(button))) << button;
        dialog.Focus(button);
        SendMessageW(dialog.Item(button), BM_CLICK, 0, 0);
    }
    // Which of Add, Modify and Delete can be pressed: "AMD", "--D".
    static std::string Enabled(const EditorWindow& dialog)
    {
        std::string letters = "AMD";
        const int buttons[] = {kAdd, kModify, kDelete};
        for (size_t i = 0; i < 3; ++i)
            if (!IsWindowEnabled(dialog.Item(buttons[i])))
                letters[i] = '-';
        return letters;
    }
    static bool IsAllSelected(const EditorWindow& dialog)
    {
        DWORD from = 99, to = 99;
        dialog.Ask(kEdit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return from == 0 && to == dialog.Text(kEdit).size();
    }
    static void ExpectReset(const EditorWindow& dialog)
    {
        EXPECT_EQ(dialog.Text(kEdit), L"<Entry Subject>");
        EXPECT_TRUE(IsAllSelected(dialog));
        EXPECT_EQ(Enabled(dialog), "---");
        EXPECT_EQ(Selected(dialog), LB_ERR);
        EXPECT_EQ(GetFocus(), dialog.Item(kEdit)) << "a button that is grey must not have the keyboard";
    }

    TestRegistry m_registry;
};

TEST_F(QuickSubjectsDialogTest, OpensWithThePlaceholderSelected)
{
    Store({L"Walk", L"apples", L"Meeting"});
    Run([](EditorWindow& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Quick Subjects");
        EXPECT_EQ(Items(dialog), (Texts{L"apples", L"Meeting", L"Walk"}));
        ExpectReset(dialog);
    });
}

TEST_F(QuickSubjectsDialogTest, IsEmptyWithoutSubjects)
{
    EXPECT_EQ(Run([](EditorWindow& dialog) { EXPECT_TRUE(Items(dialog).empty()); }), 0);
}

TEST_F(QuickSubjectsDialogTest, StandsInTheMiddleOfTheWorkArea)
{
    Run([](EditorWindow& dialog) {
        const RECT area = WorkArea();
        RECT own{};
        GetWindowRect(dialog.Window(), &own);
        EXPECT_NEAR(own.left - area.left, area.right - own.right, 1);
        EXPECT_NEAR(own.top - area.top, area.bottom - own.bottom, 1);
    });
}

TEST_F(QuickSubjectsDialogTest, IsWholeOnTheScreen)
{
    Run([](EditorWindow& dialog) {
        const RECT area = WorkArea();
        RECT own{}, seen{};
        GetWindowRect(dialog.Window(), &own);
        IntersectRect(&seen, &own, &area);
        EXPECT_TRUE(EqualRect(&seen, &own));
        EXPECT_GE(dialog.Rect(kList).bottom - dialog.Rect(kList).top,
                  3 * dialog.Ask(kList, LB_GETITEMHEIGHT, 0));
    });
}

TEST_F(QuickSubjectsDialogTest, TheListTakesTheRoomThatThereIs)
{
    Run([](EditorWindow& dialog) {
        const RECT area = WorkArea();
        RECT own{}, inside{};
        GetWindowRect(dialog.Window(), &own);
        GetClientRect(dialog.Window(), &inside);
        const bool fillsTheScreen = own.bottom - own.top == area.bottom - area.top;
        const LRESULT rows =
            (dialog.Rect(kList).bottom - dialog.Rect(kList).top) / dialog.Ask(kList, LB_GETITEMHEIGHT, 0);
        EXPECT_TRUE(fillsTheScreen || rows >= 12) << rows;
        const LONG below = inside.bottom - dialog.Rect(kList).bottom;
        EXPECT_NEAR(below, dialog.Rect(kEdit).left, Scale(3)) << "the margin is the same all round";
    });
}

TEST_F(QuickSubjectsDialogTest, BelongsToItsOwner)
{
    const TestParent owner;
    Run(
        [&](EditorWindow& dialog) {
            EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), owner.Handle());
            EXPECT_FALSE(IsWindowEnabled(owner.Handle()));
        },
        owner.Handle());
    EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
}

TEST_F(QuickSubjectsDialogTest, GainingTheFocusSelectsTheWholeText)
{
    Run([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"Lunch");
        dialog.Focus(kList);
        dialog.Ask(kEdit, EM_SETSEL, 1, 2);
        dialog.Focus(kEdit);
        EXPECT_TRUE(IsAllSelected(dialog));
        EXPECT_EQ(dialog.Text(kEdit), L"Lunch");
    });
}

TEST_F(QuickSubjectsDialogTest, AClickIntoThePlaceholderSelectsIt)
{
    Run([](EditorWindow& dialog) {
        dialog.Focus(kList);
        SendMessageW(dialog.Item(kEdit), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
        SendMessageW(dialog.Item(kEdit), WM_LBUTTONUP, 0, MAKELPARAM(20, 5));
        dialog.Type(L"x");
        EXPECT_EQ(dialog.Text(kEdit), L"x");
    });
}

TEST_F(QuickSubjectsDialogTest, LosingTheFocusRestoresThePlaceholder)
{
    const std::pair<const wchar_t*, const wchar_t*> texts[] = {
        {L"", L"<Entry Subject>"}, {L"<ENTRY subject>", L"<Entry Subject>"}, {L"Lunch", L"Lunch"}};
    for (const auto& [typed, left] : texts)
        Run([&](EditorWindow& dialog) {
            dialog.Enter(kEdit, typed);
            dialog.Focus(kList);
            EXPECT_EQ(dialog.Text(kEdit), left);
        });
}

TEST_F(QuickSubjectsDialogTest, TheButtonsFollowTheText)
{
    Store({L"Meeting", L"Meeting room", L"Walk"});
    Run([](EditorWindow& dialog) {
        const std::pair<const wchar_t*, const char*> texts[] = {
            {L"Lunch", "AM-"},          {L"meet", "AMD"}, {L"meeting", "--D"}, {L"", "---"},
            {L"MEETING R", "AMD"},      {L"walk", "--D"}, {L"walks", "AM-"},   {L"<entry SUBJECT>", "---"},
            {L"<Entry Subject>", "---"}};
        for (const auto& [text, enabled] : texts) {
            dialog.Enter(kEdit, text);
            EXPECT_EQ(Enabled(dialog), enabled) << std::wstring(text).size();
        }
    });
}

TEST_F(QuickSubjectsDialogTest, ATextThatIsNoSubjectDropsTheSelection)
{
    Store({L"Meeting", L"Walk"});
    for (const wchar_t* text : {L"", L"<ENTRY subject>"})
        Run([&](EditorWindow& dialog) {
            Select(dialog, 1);
            dialog.Enter(kEdit, L"Lunch");
            EXPECT_EQ(Selected(dialog), 1) << "a subject keeps it";
            dialog.Enter(kEdit, text);
            EXPECT_EQ(Selected(dialog), LB_ERR);
            EXPECT_EQ(Enabled(dialog), "---");
        });
}

TEST_F(QuickSubjectsDialogTest, GoingThroughTheUntouchedTextKeepsTheSelection)
{
    Store({L"Meeting", L"Walk"});
    Run([](EditorWindow& dialog) {
        Select(dialog, 1);
        dialog.Focus(kEdit);
        dialog.Focus(kDelete);
        EXPECT_EQ(Selected(dialog), 1);
        EXPECT_EQ(Enabled(dialog), "--D");
    });
}

TEST_F(QuickSubjectsDialogTest, ASelectionEnablesDeleteAndCopiesNoText)
{
    Store({L"Meeting", L"Walk"});
    Run([](EditorWindow& dialog) {
        Select(dialog, 0);
        EXPECT_EQ(Enabled(dialog), "--D");
        EXPECT_EQ(dialog.Text(kEdit), L"<Entry Subject>");
    });
}

TEST_F(QuickSubjectsDialogTest, ASelectionEnablesAllThreeBesideASubject)
{
    Store({L"Meeting", L"Walk"});
    Run([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"meeting");
        EXPECT_EQ(Enabled(dialog), "--D");
        Select(dialog, 1);
        EXPECT_EQ(Enabled(dialog), "AMD");
    });
}

TEST_F(QuickSubjectsDialogTest, WithoutASelectionDeleteAndModifyAreGrey)
{
    Store({L"Meeting", L"Walk"});
    Run([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"Meet");
        EXPECT_EQ(Enabled(dialog), "AMD");
        dialog.Ask(kList, LB_SETCURSEL, static_cast<WPARAM>(-1));
        dialog.Command(kList, LBN_SELCHANGE);
        EXPECT_EQ(Enabled(dialog), "A--");
    });
}

TEST_F(QuickSubjectsDialogTest, OtherNotificationsOfTheListChangeNothing)
{
    Store({L"Meeting"});
    Run([](EditorWindow& dialog) {
        dialog.Ask(kList, LB_SETCURSEL, 0);
        for (const WORD code : {WORD{LBN_DBLCLK}, WORD{LBN_SETFOCUS}, WORD{LBN_KILLFOCUS}})
            dialog.Command(kList, code);
        EXPECT_EQ(Enabled(dialog), "---");
    });
}

TEST_F(QuickSubjectsDialogTest, AddPutsTheTextAtTheEnd)
{
    Store({L"Walk", L"Meeting"});
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"Apples");
        Press(dialog, kAdd);
        EXPECT_EQ(Items(dialog), (Texts{L"Apples", L"Meeting", L"Walk"}));
        ExpectReset(dialog);
    });
    EXPECT_EQ(stored, (Texts{L"Walk", L"Meeting", L"Apples"}));
}

TEST_F(QuickSubjectsDialogTest, AddTakesTwoHundredAndFortyCharacters)
{
    const std::wstring longest(240, L'x');
    Run([&](EditorWindow& dialog) {
        dialog.Enter(kEdit, longest + L"y");
        Press(dialog, kAdd);
        EXPECT_EQ(Items(dialog), Texts{longest});
        dialog.Enter(kEdit, longest);
        EXPECT_EQ(Enabled(dialog), "--D") << "what is beyond does not count";
        dialog.Enter(kEdit, std::wstring(239, L'y') + L"\xD83D\xDE00");
        Press(dialog, kAdd);
        EXPECT_EQ(Items(dialog), (Texts{longest, std::wstring(239, L'y')})) << "no half of a character";
    });
}

TEST_F(QuickSubjectsDialogTest, NothingIsAddedTwice)
{
    Store({L"Meeting", L"Walk"});
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"meeting");
        dialog.Command(kAdd);
        Select(dialog, 1); // enables Add all the same
        Press(dialog, kAdd);
        EXPECT_EQ(dialog.Text(kEdit), L"meeting") << "left for the user to change";
    });
    EXPECT_EQ(stored, (Texts{L"Meeting", L"Walk"}));
}

TEST_F(QuickSubjectsDialogTest, NothingIsAddedThatIsNoSubject)
{
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Command(kAdd);
        dialog.Enter(kEdit, L"");
        dialog.Command(kAdd);
    });
    EXPECT_TRUE(stored.empty());
}

TEST_F(QuickSubjectsDialogTest, AModifiedSubjectKeepsItsPlace)
{
    Store({L"Walk", L"Meeting", L"Call"});
    const Texts stored = Stored([](EditorWindow& dialog) {
        Select(dialog, 1);
        dialog.Enter(kEdit, L"Zoo");
        Press(dialog, kModify);
        EXPECT_EQ(Items(dialog), (Texts{L"Call", L"Walk", L"Zoo"}));
        ExpectReset(dialog);
    });
    EXPECT_EQ(stored, (Texts{L"Walk", L"Zoo", L"Call"}));
}

TEST_F(QuickSubjectsDialogTest, ModifyTakesAHundredAndTwentyCharacters)
{
    Store({L"Walk"});
    Run([](EditorWindow& dialog) {
        Select(dialog, 0);
        dialog.Enter(kEdit, std::wstring(120, L'x') + L"y");
        Press(dialog, kModify);
        EXPECT_EQ(Items(dialog), Texts{std::wstring(120, L'x')});
        Select(dialog, 0);
        dialog.Enter(kEdit, std::wstring(119, L'y') + L"\xD83D\xDE00");
        Press(dialog, kModify);
        EXPECT_EQ(Items(dialog), Texts{std::wstring(119, L'y')}) << "no half of a character";
    });
}

TEST_F(QuickSubjectsDialogTest, ModifyMakesNothingTwice)
{
    Store({L"Meeting", L"Walk", std::wstring(120, L'x')});
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"MEETING");
        Select(dialog, 1);
        Press(dialog, kModify);
        dialog.Enter(kEdit, std::wstring(121, L'x')); // cut, it is there already
        Press(dialog, kModify);
    });
    EXPECT_EQ(stored, (Texts{L"Meeting", L"Walk", std::wstring(120, L'x')}));
}

TEST_F(QuickSubjectsDialogTest, ModifyWithoutASelectionDoesNothing)
{
    Store({L"Meeting"});
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"Lunch");
        Press(dialog, kModify);
        EXPECT_EQ(dialog.Text(kEdit), L"Lunch");
    });
    EXPECT_EQ(stored, Texts{L"Meeting"});
}

TEST_F(QuickSubjectsDialogTest, ModifyWithoutASubjectDoesNothing)
{
    Store({L"Meeting"});
    const Texts stored = Stored([](EditorWindow& dialog) {
        Select(dialog, 0);
        dialog.Command(kModify);
    });
    EXPECT_EQ(stored, Texts{L"Meeting"});
}

TEST_F(QuickSubjectsDialogTest, DeleteAsksFirst)
{
    Store({L"Meeting", L"Walk"});
    const MessageBoxAnswerer boxes({IDNO, IDYES});
    HWND window = nullptr;
    const Texts stored = Stored([&](EditorWindow& dialog) {
        window = dialog.Window();
        Select(dialog, 0);
        Press(dialog, kDelete);
        EXPECT_EQ(Items(dialog), (Texts{L"Meeting", L"Walk"}));
        Press(dialog, kDelete);
        EXPECT_EQ(Items(dialog), Texts{L"Walk"});
        EXPECT_EQ(Selected(dialog), LB_ERR);
        EXPECT_EQ(Enabled(dialog), "---");
        EXPECT_EQ(GetFocus(), dialog.Item(kList));
    });
    EXPECT_EQ(stored, Texts{L"Walk"});
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    EXPECT_EQ(boxes.Boxes()[0].text, L"Delete?");
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Confirm");
    EXPECT_EQ(boxes.Boxes()[0].owner, window);
    EXPECT_EQ(boxes.Boxes()[0].answers, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(boxes.Boxes()[0].icon, LoadIconW(nullptr, IDI_EXCLAMATION));
}

TEST_F(QuickSubjectsDialogTest, DeleteAsksWhenTheOptionIsMissingOrNotZero)
{
    for (const DWORD option : {1u, 7u}) {
        Store({L"Meeting"});
        App().SetNumber(kOptions, L"ConfirmDelete", option);
        const MessageBoxAnswerer boxes({IDNO});
        Run([](EditorWindow& dialog) {
            Select(dialog, 0);
            Press(dialog, kDelete);
        });
        EXPECT_EQ(boxes.Boxes().size(), 1u) << option;
    }
}

TEST_F(QuickSubjectsDialogTest, DeleteDoesNotAskWhenTheOptionIsOff)
{
    Store({L"Meeting", L"Walk"});
    App().SetNumber(kOptions, L"ConfirmDelete", 0);
    const MessageBoxAnswerer boxes({IDNO});
    const Texts stored = Stored([](EditorWindow& dialog) {
        Select(dialog, 1);
        Press(dialog, kDelete);
    });
    EXPECT_EQ(stored, Texts{L"Meeting"});
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(QuickSubjectsDialogTest, DeleteWithoutASelectionDoesNothing)
{
    Store({L"Meeting"});
    const MessageBoxAnswerer boxes({IDYES});
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"meeting");
        Press(dialog, kDelete);
        EXPECT_EQ(dialog.Text(kEdit), L"meeting");
    });
    EXPECT_EQ(stored, Texts{L"Meeting"});
    EXPECT_TRUE(boxes.Boxes().empty()) << "there is nothing to ask about";
}

TEST_F(QuickSubjectsDialogTest, OnceDeletedATextIsNoRepetitionAnyMore)
{
    Store({L"Meeting"});
    App().SetNumber(kOptions, L"ConfirmDelete", 0);
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"meeting");
        Select(dialog, 0);
        Press(dialog, kDelete);
        EXPECT_EQ(Enabled(dialog), "AM-");
        Press(dialog, kAdd);
    });
    EXPECT_EQ(stored, Texts{L"meeting"});
}

TEST_F(QuickSubjectsDialogTest, OneOfFiveDeletedLeavesFourAndTheOldFifthValue)
{
    Store({L"A", L"B", L"C", L"D", L"E"});
    App().SetNumber(kOptions, L"ConfirmDelete", 0);
    const Texts stored = Stored([](EditorWindow& dialog) {
        Select(dialog, 1);
        Press(dialog, kDelete);
        EXPECT_EQ(App().GetNumber(L"Settings", L"scount", 99), 5u) << "only OK stores";
    });
    EXPECT_EQ(stored, (Texts{L"A", L"C", L"D", L"E"}));
    EXPECT_EQ(App().GetNumber(L"Settings", L"scount", 99), 4u);
    wchar_t last[kSettingTextSize];
    App().GetString(L"Options", L"subj4", L"", last);
    EXPECT_STREQ(last, L"E");
}

TEST_F(QuickSubjectsDialogTest, CancelStoresNothing)
{
    Store({L"Meeting", L"Walk"});
    App().SetNumber(kOptions, L"ConfirmDelete", 0);
    const int result = Run([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"Lunch");
        Press(dialog, kAdd);
        Select(dialog, 2);
        Press(dialog, kDelete);
        Select(dialog, 0);
        dialog.Enter(kEdit, L"Dinner");
        Press(dialog, kModify);
        EXPECT_EQ(Items(dialog), (Texts{L"Dinner", L"Meeting"}));
        dialog.Cancel();
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(ReadQuickSubjects(App()), (Texts{L"Meeting", L"Walk"}));
    EXPECT_EQ(App().GetNumber(L"Settings", L"scount", 99), 2u);
}

TEST_F(QuickSubjectsDialogTest, OkStoresAnEmptyList)
{
    EXPECT_TRUE(Stored([](EditorWindow&) {}).empty());
    EXPECT_EQ(App().GetNumber(L"Settings", L"scount", 99), 0u);
}

TEST_F(QuickSubjectsDialogTest, EnterIsOkAndEscIsCancel)
{
    for (const auto& [key, result] : {std::pair(VK_RETURN, 1), std::pair(VK_ESCAPE, 0)})
        for (const int item : {kEdit, kList})
            EXPECT_EQ(Run([&, pressed = key](EditorWindow& dialog) {
                          dialog.Focus(item);
                          dialog.Key(static_cast<WORD>(pressed));
                          EXPECT_FALSE(IsWindowVisible(dialog.Window()));
                      }),
                      result)
                << item;
}

TEST_F(QuickSubjectsDialogTest, TheTabKeyGoesRound)
{
    Store({L"Meeting"});
    Run([](EditorWindow& dialog) {
        dialog.Enter(kEdit, L"Meet"); // nothing is grey
        for (const int item : {kList, kAdd, kModify, kDelete, IDOK, IDCANCEL, kEdit}) {
            dialog.Key(VK_TAB);
            EXPECT_EQ(GetFocus(), dialog.Item(item)) << item;
        }
    });
}

TEST_F(QuickSubjectsDialogTest, TheKeyboardAloneKeepsTheList)
{
    Store({L"Meeting", L"Walk"});
    App().SetNumber(kOptions, L"ConfirmDelete", 0);
    const Texts stored = Stored([](EditorWindow& dialog) {
        dialog.Type(L"Lunch"); // over the placeholder, which is selected
        dialog.Key(VK_TAB);
        dialog.Key(VK_TAB);
        dialog.Key(VK_SPACE); // Add
        dialog.Key(VK_TAB);
        dialog.Key(VK_HOME); // the first in the list: Lunch
        EXPECT_EQ(Selected(dialog), 0);
        dialog.Key(VK_TAB, false, true);
        dialog.Type(L"Dinner");
        dialog.Key(VK_TAB);
        dialog.Key(VK_TAB);
        dialog.Key(VK_TAB);
        dialog.Key(VK_SPACE); // Modify
        EXPECT_EQ(Items(dialog), (Texts{L"Dinner", L"Meeting", L"Walk"}));
        dialog.Key(VK_TAB);
        dialog.Key(VK_END); // some systems' first key in a list without a selection only selects
        dialog.Key(VK_END);
        EXPECT_EQ(Selected(dialog), 2);
        dialog.Key(VK_TAB);
        dialog.Key(VK_SPACE); // Delete, the only one that is not grey
    });
    EXPECT_EQ(stored, (Texts{L"Meeting", L"Dinner"}));
}

TEST_F(QuickSubjectsDialogTest, ALongSubjectCanBeScrolledIntoView)
{
    Store({L"Walk"});
    Run([](EditorWindow& dialog) {
        RECT room{};
        GetClientRect(dialog.Item(kList), &room);
        EXPECT_LT(dialog.Ask(kList, LB_GETHORIZONTALEXTENT), room.right);
        dialog.Enter(kEdit, std::wstring(200, L'W'));
        Press(dialog, kAdd);
        EXPECT_GT(dialog.Ask(kList, LB_GETHORIZONTALEXTENT), room.right);
    });
}

TEST_F(QuickSubjectsDialogTest, SubjectsThatCannotBeReadAreNotListed)
{
    Store({L"A", L"", std::wstring(200, L'x'), L"D"});
    EXPECT_EQ(Stored([](EditorWindow& dialog) {
                  EXPECT_EQ(Items(dialog), (Texts{L"A", L"D"}));
              }),
              (Texts{L"A", L"D"}));
    EXPECT_EQ(App().GetNumber(L"Settings", L"scount", 99), 2u);
}

TEST_F(QuickSubjectsDialogTest, TheInputPanelsOptionChangesNothing)
{
    for (const DWORD option : {0u, 1u}) {
        App().SetNumber(kOptions, L"DynSIP", option);
        EXPECT_EQ(Run([](EditorWindow& dialog) { dialog.Ok(); }), 1);
        EXPECT_EQ(Run([](EditorWindow& dialog) { dialog.Cancel(); }), 0);
    }
}

} // namespace
