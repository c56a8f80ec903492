#include "quick_subjects_fixture.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace {

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
        dialog.ExpectWholeOnScreen();
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
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
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

TEST_F(QuickSubjectsDialogTest, SubjectsThatCannotBeReadAreEmptyInTheirPlaces)
{
    Store({L"A", L"", std::wstring(200, L'x'), L"D"});
    EXPECT_EQ(Stored([](EditorWindow& dialog) {
                  EXPECT_EQ(Items(dialog), (Texts{L"", L"", L"A", L"D"})) << "the list box sorts";
              }),
              (Texts{L"A", L"", L"", L"D"}));
    EXPECT_EQ(Own().GetNumber(L"Settings", L"scount", 99), 4u);
}

// So that it can be got rid of.
TEST_F(QuickSubjectsDialogTest, AnEmptySubjectCanBeDeleted)
{
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
    Store({L"A", L"", L"D"});
    EXPECT_EQ(Stored([](EditorWindow& dialog) {
                  dialog.Focus(kList);
                  dialog.Key(VK_HOME);
                  Press(dialog, kDelete);
              }),
              (Texts{L"A", L"D"}));
}

TEST_F(QuickSubjectsDialogTest, TheInputPanelsOptionChangesNothing)
{
    for (const DWORD option : {0u, 1u}) {
        Own().SetNumber(kOptions, L"DynSIP", option);
        EXPECT_EQ(Run([](EditorWindow& dialog) { dialog.Ok(); }), 1);
        EXPECT_EQ(Run([](EditorWindow& dialog) { dialog.Cancel(); }), 0);
    }
}

} // namespace
