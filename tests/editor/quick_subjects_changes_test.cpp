// What Add, Modify and Delete do to the list, and what OK and Cancel make of it.
#include "quick_subjects_fixture.h"

namespace {

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
        Own().SetNumber(kOptions, L"ConfirmDelete", option);
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
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
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
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
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
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
    const Texts stored = Stored([](EditorWindow& dialog) {
        Select(dialog, 1);
        Press(dialog, kDelete);
        EXPECT_EQ(Own().GetNumber(L"Settings", L"scount", 99), 5u) << "only OK stores";
    });
    EXPECT_EQ(stored, (Texts{L"A", L"C", L"D", L"E"}));
    EXPECT_EQ(Own().GetNumber(L"Settings", L"scount", 99), 4u);
    wchar_t last[kSettingTextSize];
    Own().GetString(L"Options", L"subj4", L"", last);
    EXPECT_STREQ(last, L"E");
}

TEST_F(QuickSubjectsDialogTest, CancelStoresNothing)
{
    Store({L"Meeting", L"Walk"});
    Own().SetNumber(kOptions, L"ConfirmDelete", 0);
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
    EXPECT_EQ(ReadQuickSubjects(Own()), (Texts{L"Meeting", L"Walk"}));
    EXPECT_EQ(Own().GetNumber(L"Settings", L"scount", 99), 2u);
}

TEST_F(QuickSubjectsDialogTest, OkStoresAnEmptyList)
{
    EXPECT_TRUE(Stored([](EditorWindow&) {}).empty());
    EXPECT_EQ(Own().GetNumber(L"Settings", L"scount", 99), 0u);
}

} // namespace
