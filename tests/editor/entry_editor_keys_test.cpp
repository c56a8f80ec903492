// The editor worked with real keys, through the dialog manager's translation.
#include "editor_fixture.h"
#include "support/import_watch.h"

namespace {

constexpr int kFields[] = {IDC_START_DATE, IDC_START_TIME, IDC_SUBJECT, IDC_TYPE,
                           IDC_DURATION,   IDC_EDITOR_BAR, IDC_BODY,    IDOK};

class EntryEditorKeysTest : public EditorTest {
  protected:
    CEOID WriteOne()
    {
        EntryToWrite entry;
        entry.date = entry.endTime = At(kTuesday);
        entry.subject = L"Lunch";
        entry.body = L"Text";
        entry.type = L"Note";
        return Write(entry);
    }
    static int CountOf(const std::wstring& text, const std::wstring& part)
    {
        int count = 0;
        for (size_t at = text.find(part); at != std::wstring::npos; at = text.find(part, at + part.size()))
            ++count;
        return count;
    }
    // Ctrl with a key from a field of a changed record saves it, once.
    void ExpectSave(int field, WORD key)
    {
        CEOID id = WriteOne();
        Run(&id, [&](EditorWindow& editor) {
            editor.Enter(IDC_BODY, L"Changed");
            editor.Focus(field);
            editor.Key(key, true);
            EXPECT_FALSE(editor.SaveEnabled()) << field;
            EXPECT_EQ(editor.Text(IDC_BODY), L"Changed") << field;
            EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Lunch") << field;
            EXPECT_TRUE(IsWindowVisible(editor.Window())) << field;
        });
        EXPECT_EQ(Read(id).body, L"Changed") << field;
    }
};

TEST_F(EntryEditorKeysTest, CtrlSSavesFromEveryField)
{
    for (const int field : kFields)
        ExpectSave(field, 'S');
}

TEST_F(EntryEditorKeysTest, CtrlEnterSavesFromEveryFieldAndClosesNothing)
{
    for (const int field : kFields)
        ExpectSave(field, VK_RETURN);
}

TEST_F(EntryEditorKeysTest, CtrlTSetsOneTimeStampFromEveryField)
{
    for (const int field : kFields)
        RunNew([&](EditorWindow& editor) {
            editor.Enter(IDC_BODY, L"Text");
            editor.Focus(field);
            editor.Key('T', true);
            EXPECT_EQ(CountOf(editor.Text(IDC_BODY), L"\r\n\r\n"), 1) << field;
            EXPECT_EQ(CountOf(editor.Text(IDC_BODY), L" - "), 1) << field;
            EXPECT_EQ(GetFocus(), editor.Item(IDC_BODY)) << field;
        });
}

TEST_F(EntryEditorKeysTest, EachPressActsOnce)
{
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"Text");
        for (int presses = 1; presses <= 3; ++presses) {
            editor.Key('T', true);
            EXPECT_EQ(CountOf(editor.Text(IDC_BODY), L" - "), presses);
        }
    });
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"Text");
        editor.Key('S', true);
        EXPECT_EQ(Count(), 1u);
    });
}

TEST_F(EntryEditorKeysTest, CtrlTReplacesThePlaceholder)
{
    RunNew([&](EditorWindow& editor) {
        wchar_t time[80];
        GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &kTuesday, nullptr, time, 80);
        editor.Focus(IDC_SUBJECT);
        editor.Key('T', true);
        EXPECT_EQ(editor.Text(IDC_BODY), std::wstring(time) + L" - ");
        editor.Type(L"x");
        EXPECT_EQ(editor.Text(IDC_BODY), std::wstring(time) + L" - x");
    });
}

TEST_F(EntryEditorKeysTest, AQueryAboutTheCharacterIsTheCommand)
{
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"Text");
        MSG message{};
        message.hwnd = editor.Field(IDC_SUBJECT);
        message.message = WM_CHAR;
        message.wParam = 19;
        SendMessageW(message.hwnd, WM_GETDLGCODE, 19, reinterpret_cast<LPARAM>(&message));
        EXPECT_EQ(Count(), 1u);
        message.wParam = 20;
        SendMessageW(message.hwnd, WM_GETDLGCODE, 20, reinterpret_cast<LPARAM>(&message));
        EXPECT_EQ(CountOf(editor.Text(IDC_BODY), L" - "), 1);
        message.wParam = 18;
        SendMessageW(message.hwnd, WM_GETDLGCODE, 18, reinterpret_cast<LPARAM>(&message));
        SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0);
        EXPECT_EQ(Count(), 1u);
    });
}

TEST_F(EntryEditorKeysTest, AGreyedCommandDoesNothingFromTheKeyboard)
{
    RunNew([&](EditorWindow& editor) {
        editor.Focus(IDC_SUBJECT);
        editor.Key('S', true);
        EXPECT_EQ(Count(), 0u);
        editor.Ask(IDC_EDITOR_BAR, TB_ENABLEBUTTON, CMD_TIME_STAMP, FALSE);
        editor.Key('T', true);
        EXPECT_EQ(editor.Text(IDC_BODY), L"<Entry Body>");
    });
}

TEST_F(EntryEditorKeysTest, EnterBreaksALineInTheBody)
{
    RunNew([&](EditorWindow& editor) {
        editor.Focus(IDC_BODY);
        editor.Type(L"a");
        editor.Key(VK_RETURN);
        editor.Type(L"b");
        EXPECT_EQ(editor.Text(IDC_BODY), L"a\r\nb");
    });
}

TEST_F(EntryEditorKeysTest, EnterElsewhereIsOk)
{
    for (const int field : {IDC_START_DATE, IDC_START_TIME, IDC_SUBJECT, IDC_TYPE, IDC_DURATION, IDOK}) {
        CEOID id = WriteOne();
        EXPECT_EQ(Run(&id,
                      [&](EditorWindow& editor) {
                          editor.Enter(IDC_BODY, L"Changed");
                          editor.Focus(field);
                          editor.Key(VK_RETURN);
                          EXPECT_FALSE(IsWindowVisible(editor.Window())) << field;
                      }),
                  1)
            << field;
        EXPECT_EQ(Read(id).body, L"Changed") << field;
    }
}

TEST_F(EntryEditorKeysTest, EscIsCancelEverywhere)
{
    for (const int field : kFields) {
        const MessageBoxAnswerer boxes({IDYES});
        CEOID id = WriteOne();
        EXPECT_EQ(Run(&id,
                      [&](EditorWindow& editor) {
                          editor.Enter(IDC_BODY, L"Changed");
                          editor.Focus(field);
                          editor.Key(VK_ESCAPE);
                          EXPECT_TRUE(PumpUntil([&] { return !IsWindowVisible(editor.Window()); })) << field;
                      }),
                  0)
            << field;
        EXPECT_EQ(boxes.Boxes().size(), 1u) << field;
        EXPECT_EQ(Read(id).body, L"Text") << field;
    }
}

TEST_F(EntryEditorKeysTest, EscInADroppedListClosesOnlyTheList)
{
    for (const int box : {IDC_SUBJECT, IDC_TYPE, IDC_DURATION})
        RunNew([&](EditorWindow& editor) {
            editor.Focus(box);
            editor.Key(VK_F4);
            ASSERT_TRUE(editor.Ask(box, CB_GETDROPPEDSTATE)) << box;
            editor.Key(VK_ESCAPE);
            EXPECT_FALSE(editor.Ask(box, CB_GETDROPPEDSTATE)) << box;
            EXPECT_TRUE(IsWindowVisible(editor.Window())) << box;
        });
}

TEST_F(EntryEditorKeysTest, F1AsksForHelpOnce)
{
    const NothingStarts nothing;
    for (const int field : {IDC_START_DATE, IDC_SUBJECT, IDC_TYPE, IDC_EDITOR_BAR, IDC_BODY, IDOK}) {
        const MessageBoxAnswerer boxes;
        RunNew([&](EditorWindow& editor) {
            editor.Focus(field);
            editor.Key(VK_F1);
        });
        EXPECT_EQ(boxes.Boxes().size(), 1u) << field;
    }
}

TEST_F(EntryEditorKeysTest, TheTabKeyWalksThroughTheEditor)
{
    RunNew([&](EditorWindow& editor) {
        for (const int field : {IDC_START_TIME, IDC_SUBJECT, IDC_TYPE, IDC_DURATION, IDC_EDITOR_BAR, IDC_BODY,
                                IDOK, IDCANCEL, IDC_START_DATE}) {
            editor.Key(VK_TAB);
            EXPECT_EQ(GetFocus(), editor.Field(field)) << field;
        }
        editor.Key(VK_TAB, false, true);
        EXPECT_EQ(GetFocus(), editor.Item(IDCANCEL));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorKeysTest, TypingReplacesThePlaceholdersThatTheTabKeyComesTo)
{
    CEOID id = 0;
    Run(&id, [&](EditorWindow& editor) {
        editor.Key(VK_TAB);
        editor.Key(VK_TAB);
        editor.Type(L"Lunch");
        for (int i = 0; i < 4; ++i)
            editor.Key(VK_TAB);
        editor.Type(L"With Ann");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).subject, L"Lunch");
    EXPECT_EQ(Read(id).body, L"With Ann");
}

TEST_F(EntryEditorKeysTest, TheTabKeySelectsNoTextOfTheUsers)
{
    CEOID id = WriteOne();
    Run(&id, [&](EditorWindow& editor) {
        editor.Focus(IDC_EDITOR_BAR);
        editor.Key(VK_TAB);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_BODY));
        editor.Type(L"x");
        EXPECT_EQ(editor.Text(IDC_BODY).size(), 5u);
    });
}

TEST_F(EntryEditorKeysTest, AClickIntoAPlaceholderSelectsIt)
{
    for (const int field : {IDC_BODY, IDC_SUBJECT})
        RunNew([&](EditorWindow& editor) {
            HWND edit = editor.Field(field);
            SendMessageW(edit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
            SendMessageW(edit, WM_LBUTTONUP, 0, MAKELPARAM(20, 5));
            EXPECT_EQ(GetFocus(), edit);
            SendMessageW(edit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 5));
            SendMessageW(edit, WM_LBUTTONUP, 0, MAKELPARAM(20, 5));
            editor.Type(L"Mine");
            EXPECT_EQ(editor.Text(field), L"Mine");
        });
}

// A box hands the question for its text's colours on to the dialog.
TEST_F(EntryEditorKeysTest, PlaceholdersAreGrey)
{
    for (const int field : {IDC_BODY, IDC_SUBJECT})
        RunNew([&](EditorWindow& editor) {
            HWND edit = editor.Field(field);
            HDC dc = GetDC(edit);
            const auto colour = [&] {
                SendMessageW(GetParent(edit), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc),
                             reinterpret_cast<LPARAM>(edit));
                return GetTextColor(dc);
            };
            EXPECT_EQ(colour(), GetSysColor(COLOR_GRAYTEXT)) << field;
            editor.Enter(field, L"Mine");
            EXPECT_EQ(colour(), GetSysColor(COLOR_WINDOWTEXT)) << field;
            ReleaseDC(edit, dc);
        });
}

TEST_F(EntryEditorKeysTest, AClickIntoTextOfTheUsersSetsTheCaret)
{
    CEOID id = WriteOne();
    Run(&id, [&](EditorWindow& editor) {
        SendMessageW(editor.Item(IDC_BODY), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(200, 5));
        SendMessageW(editor.Item(IDC_BODY), WM_LBUTTONUP, 0, MAKELPARAM(200, 5));
        editor.Type(L"x");
        EXPECT_EQ(editor.Text(IDC_BODY), L"Textx");
    });
}

TEST_F(EntryEditorKeysTest, SaveFromTheBar)
{
    CEOID id = 0;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Lunch");
        editor.Focus(IDC_EDITOR_BAR); // the timer, the first button that can be pressed
        for (int i = 0; i < 4; ++i)
            editor.Key(VK_RIGHT); // sensitivity, priority, time stamp, save
        editor.Key(VK_RETURN);
        EXPECT_EQ(Count(), 1u);
        EXPECT_TRUE(IsWindowVisible(editor.Window()));
    });
    EXPECT_EQ(Read(id).subject, L"Lunch");
}

TEST_F(EntryEditorKeysTest, AMenuDropsFromTheBarByKey)
{
    for (const WORD key : {WORD{VK_DOWN}, WORD{VK_F4}, WORD{VK_SPACE}, WORD{VK_RETURN}})
        RunNew([&](EditorWindow& editor) {
            editor.Focus(IDC_EDITOR_BAR);
            editor.Key(VK_RIGHT);
            const MenuChooser chooser(CMD_SENSITIVITY_PERSONAL);
            editor.Key(key);
            EXPECT_TRUE(chooser.Chose());
            EXPECT_EQ(editor.BarText(CMD_SENSITIVITY), L"Personal");
        });
}

TEST_F(EntryEditorKeysTest, AClickOnADropDownButtonsBodyDropsItsMenu)
{
    RunNew([&](EditorWindow& editor) {
        HWND bar = editor.Item(IDC_EDITOR_BAR);
        RECT rect{};
        SendMessageW(bar, TB_GETRECT, CMD_PRIORITY, reinterpret_cast<LPARAM>(&rect));
        const LPARAM point = MAKELPARAM(rect.left + 5, (rect.top + rect.bottom) / 2);
        const MenuChooser chooser(CMD_PRIORITY_LOW);
        SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(bar, WM_LBUTTONUP, 0, point);
        EXPECT_TRUE(PumpUntil([&] { return chooser.Chose(); }));
        EXPECT_EQ(editor.BarText(CMD_PRIORITY), L"Low");
    });
}

// What comes in within a menu's loop may end the bar, which its handling of the click would not outlive.
TEST_F(EntryEditorKeysTest, AClickOnADropDownButtonsArrowDropsItsMenuBehindTheClick)
{
    RunNew([&](EditorWindow& editor) {
        HWND bar = editor.Item(IDC_EDITOR_BAR);
        RECT rect{};
        SendMessageW(bar, TB_GETRECT, CMD_PRIORITY, reinterpret_cast<LPARAM>(&rect));
        const LPARAM point = MAKELPARAM(rect.right - 4, (rect.top + rect.bottom) / 2);
        const MenuChooser chooser(CMD_PRIORITY_LOW);
        SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, point);
        EXPECT_FALSE(chooser.Chose());
        SendMessageW(bar, WM_LBUTTONUP, 0, point);
        EXPECT_TRUE(PumpUntil([&] { return editor.BarText(CMD_PRIORITY) == L"Low"; }));
        EXPECT_TRUE(chooser.Chose());
    });
}

TEST_F(EntryEditorKeysTest, AMenuThatIsLeftChangesNothing)
{
    RunNew([&](EditorWindow& editor) {
        const MenuChooser chooser(0);
        editor.DropDown(CMD_PRIORITY);
        EXPECT_EQ(editor.BarText(CMD_PRIORITY), L"Normal");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

} // namespace
