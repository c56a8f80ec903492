// The editor's subject box and the Quick Subjects dialog that it opens.
#include "editor_fixture.h"

#include "editor/quick_subjects.h"

namespace {

using Texts = std::vector<std::wstring>;

constexpr int kAdd = 1026, kEdit = 1402;

class EntryEditorSubjectsTest : public EditorTest {
  protected:
    static Texts Items(const EditorWindow& editor)
    {
        Texts items;
        for (int i = 0; i < editor.Ask(IDC_SUBJECT, CB_GETCOUNT); ++i)
            items.push_back(editor.ListItem(IDC_SUBJECT, i));
        return items;
    }
    // Takes the box's first item and works the dialog that it opens.
    static void ModifySubjects(
        const EditorWindow& editor, const std::function<void(EditorWindow&)>& action = [](EditorWindow&) {})
    {
        ModalDriver driver([&](HWND window) {
            ShowWindow(window, SW_SHOW); // before the dialog manager comes to it
            EditorWindow dialog(window);
            EXPECT_EQ(WindowText(window), L"Quick Subjects");
            EXPECT_EQ(GetWindow(window, GW_OWNER), editor.Window());
            action(dialog);
            if (IsWindowVisible(window))
                dialog.Cancel();
        });
        editor.ChooseInBox(IDC_SUBJECT, 0);
        EXPECT_TRUE(driver.Ran());
    }
    static void AddAndClose(EditorWindow& dialog, const wchar_t* subject)
    {
        dialog.Enter(kEdit, subject);
        dialog.Command(kAdd);
        dialog.Ok();
    }
    CEOID WriteOne(const wchar_t* subject)
    {
        EntryToWrite entry;
        entry.date = entry.endTime = At(kTuesday);
        entry.subject = subject;
        entry.body = L"Text"; // its mask has the subject's bit, too
        entry.type = L"Note";
        return Write(entry);
    }
    // A record with one property alone: "Note" or 0.
    static CEOID WriteOnly(CEPROPID property)
    {
        std::wstring text = L"Note";
        CEPROPVAL value{};
        value.propid = property;
        if (property == kPropBody || property == kPropType)
            value.val.lpwstr = text.data();
        const CEOID id = Own().Journal().WriteRecord(0, 1, &value);
        EXPECT_NE(id, 0u);
        return id;
    }
};

TEST_F(EntryEditorSubjectsTest, TheFirstItemOpensTheDialogAndTheBoxIsFilledAnew)
{
    StoreQuickSubjects(&Own(), {L"Walk"});
    RunNew([](EditorWindow& editor) {
        ModifySubjects(editor, [](EditorWindow& dialog) { AddAndClose(dialog, L"Apples"); });
        EXPECT_EQ(Items(editor), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>", L"Apples", L"Walk"}));
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, CB_GETCURSEL), 1);
        EXPECT_TRUE(IsWindowEnabled(editor.Window()));
    });
}

TEST_F(EntryEditorSubjectsTest, OnlyTheFirstItemOpensIt)
{
    StoreQuickSubjects(&Own(), {L"Walk"});
    RunNew([](EditorWindow& editor) {
        const ModalDriver driver([](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
        editor.ChooseInBox(IDC_SUBJECT, 1);
        editor.ChooseInBox(IDC_SUBJECT, 2);
        for (const WORD code : {WORD{CBN_SELCHANGE}, WORD{CBN_DROPDOWN}, WORD{CBN_KILLFOCUS},
                                WORD{CBN_SETFOCUS}, WORD{CBN_SELENDOK}, WORD{CBN_SELENDCANCEL}}) {
            editor.Ask(IDC_SUBJECT, CB_SETCURSEL, 0);
            editor.Command(IDC_SUBJECT, code);
        }
        EXPECT_FALSE(driver.Ran());
    });
}

TEST_F(EntryEditorSubjectsTest, ANewEntrysTypedSubjectGivesWay)
{
    CEOID id = 0;
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Lunch");
        ModifySubjects(editor);
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(Items(editor).size(), 2u);
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).subject);
}

// Nothing has been loaded, and the box has "<Entry Subject>" until the user says otherwise.
TEST_F(EntryEditorSubjectsTest, ANewEntrysSavedSubjectGivesWayToo)
{
    CEOID id = 0;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Lunch");
        editor.Command(CMD_SAVE);
        ASSERT_NE(id, 0u);
        ModifySubjects(editor);
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(Items(editor).size(), 2u);
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Read(id).subject, L"Lunch") << "stored until the next save";
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).subject);
}

// An empty text is a text: it is shown as an item of its own and outlasts a save.
TEST_F(EntryEditorSubjectsTest, ARecordsEmptySubjectIsASubject)
{
    CEOID id = WriteOne(L"");
    ASSERT_EQ(Read(id).subject, L"");
    Run(&id, [&](EditorWindow& editor) {
        EXPECT_EQ(Items(editor), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>", L""}));
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, CB_GETCURSEL), 2);
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"");
        EXPECT_FALSE(editor.SaveEnabled());
        editor.Enter(IDC_BODY, L"Other");
        editor.Command(CMD_SAVE);
        EXPECT_EQ(Read(id).subject, L"");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).subject, L"");
    EXPECT_EQ(Read(id).body, L"Other");
    Run(&id, [](EditorWindow& editor) {
        // Told by hand: a box that loses the keyboard, as it does late with its window, takes no text for no
        // subject.
        const ModalDriver driver([](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
        editor.Focus(IDC_BODY);
        editor.Ask(IDC_SUBJECT, CB_SETCURSEL, 0);
        editor.Command(IDC_SUBJECT, CBN_CLOSEUP);
        EXPECT_TRUE(driver.Ran());
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, CB_GETCURSEL), 2) << "as read afresh";
    });
}

TEST_F(EntryEditorSubjectsTest, ARecordsSubjectComesBack)
{
    CEOID id = WriteOne(L"Lunch");
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        ModifySubjects(editor, [](EditorWindow& dialog) { AddAndClose(dialog, L"Walk"); });
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Lunch") << "what is stored, not what was typed over it";
        EXPECT_EQ(Items(editor), (Texts{L"<Modify Quick Subjects>", L"<Entry Subject>", L"Lunch", L"Walk"}));
        editor.Enter(IDC_BODY, L"x");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).subject, L"Lunch");
}

TEST_F(EntryEditorSubjectsTest, ARecordsSubjectIsReadAfresh)
{
    CEOID id = WriteOne(L"Lunch");
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Command(CMD_SAVE);
        ModifySubjects(editor);
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Dinner");
        EXPECT_EQ(Items(editor).size(), 3u);
    });
}

// The numbers of what was loaded decide, and those of the body and the sensitivity have the subject's bit.
TEST_F(EntryEditorSubjectsTest, ASubjectThatARecordGotMeanwhileComesBackByWhatWasLoaded)
{
    const std::pair<CEPROPID, bool> loaded[] = {
        {kPropBody, true}, {kPropSensitivity, true}, {kPropType, false}, {kPropPriority, false}};
    for (const auto& [property, comesBack] : loaded) {
        CEOID id = WriteOnly(property);
        Run(&id, [&, subject = comesBack ? L"Dinner" : L"<Entry Subject>"](EditorWindow& editor) {
            editor.Enter(IDC_SUBJECT, L"Dinner");
            editor.Command(CMD_SAVE);
            ASSERT_EQ(Read(id).subject, L"Dinner");
            ModifySubjects(editor);
            EXPECT_EQ(editor.Text(IDC_SUBJECT), subject) << PropertyNumber(property);
        });
    }
}

TEST_F(EntryEditorSubjectsTest, ARecordWithoutASubjectAddsNone)
{
    CEOID id = WriteOne(L"<Entry Subject>");
    ASSERT_FALSE(Read(id).subject);
    Run(&id, [](EditorWindow& editor) {
        ModifySubjects(editor);
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(Items(editor).size(), 2u);
    });
}

TEST_F(EntryEditorSubjectsTest, TheItemItselfIsNoSubject)
{
    CEOID id = 0;
    Run(&id, [](EditorWindow& editor) {
        editor.Choose(CMD_PRIORITY, CMD_PRIORITY_LOW);
        editor.Ask(IDC_SUBJECT, CB_SETCURSEL, 0);
        editor.Ok();
    });
    ASSERT_NE(id, 0u);
    EXPECT_FALSE(Read(id).subject);
}

TEST_F(EntryEditorSubjectsTest, AQuickSubjectCanBeChosen)
{
    StoreQuickSubjects(&Own(), {L"Walk"});
    CEOID id = 0;
    Run(&id, [](EditorWindow& editor) {
        editor.ChooseInBox(IDC_SUBJECT, 2);
        editor.Ok();
    });
    ASSERT_NE(id, 0u);
    EXPECT_EQ(Read(id).subject, L"Walk");
}

TEST_F(EntryEditorSubjectsTest, TheTimerTicksWhileTheDialogIsOpen)
{
    RunNew([&](EditorWindow& editor) {
        editor.Command(CMD_TIMER);
        SYSTEMTIME later = kTuesday;
        later.wMinute += 3;
        m_clock.Set(later);
        ModifySubjects(editor, [&](EditorWindow&) {
            EXPECT_NE(SetTimer(editor.Window(), 1, 10, nullptr), 0u);
            EXPECT_TRUE(PumpUntil([&] { return editor.Text(IDC_DURATION) == L"3 minutes"; }));
        });
    });
}

} // namespace
