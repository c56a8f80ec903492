// The editor's three views: how they take turns, and what stays as it is meanwhile.
#include "assign_fixture.h"

#include "editor/entry_editor_dialog.h"
#include "mervane/file/store_path.h"
#include "res/resource.h"
#include "support/import_watch.h"
#include "support/locked_store.h"
#include "support/settings_log.h"
#include "support/thread_hook.h"
#include "support/work_area_setting.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace {

class EntryEditorViewsTest : public AssignTest {
  protected:
    void SetUp() override
    {
        AssignTest::SetUp();
        m_home = AddCategory(L"Home");
        m_ann = AddContact(L"Ann", L"Works");
    }

    CEOID m_home = 0;
    CEOID m_ann = 0;
};

// What is seen in the place below the bar: 0 the body, else the identifier of the one list.
int Seen(EditorWindow& editor)
{
    const bool body = (GetWindowLongPtrW(editor.Item(IDC_BODY), GWL_STYLE) & WS_VISIBLE) != 0;
    int lists = 0;
    int seen = 0;
    for (const int id : {IDC_CATEGORY_LIST, IDC_CONTACT_LIST})
        if (HWND list = GetDlgItem(editor.Window(), id)) {
            ++lists;
            EXPECT_TRUE(IsWindowVisible(list)) << id;
            seen = id;
        }
    EXPECT_EQ(lists, body ? 0 : 1);
    return seen;
}

bool IsEnabled(EditorWindow& editor, int command)
{
    return editor.BarState(command) & TBSTATE_ENABLED;
}

void ExpectView(EditorWindow& editor, int command)
{
    for (const int view : {CMD_EDIT_ENTRY_VIEW, CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS})
        EXPECT_EQ((editor.BarState(view) & TBSTATE_CHECKED) != 0, view == command) << view;
    EXPECT_EQ(Seen(editor), command == CMD_ASSIGN_CATEGORIES ? IDC_CATEGORY_LIST
                            : command == CMD_ASSIGN_CONTACTS ? IDC_CONTACT_LIST
                                                             : 0);
    EXPECT_EQ(IsEnabled(editor, CMD_TIME_STAMP), command == CMD_EDIT_ENTRY_VIEW) << "time stamp";
    EXPECT_EQ(IsEnabled(editor, CMD_ZOOM), command == CMD_EDIT_ENTRY_VIEW) << "zoom";
    EXPECT_EQ(IsEnabled(editor, CMD_EDIT_CATEGORIES), command == CMD_ASSIGN_CATEGORIES) << "edit categories";
}

int ListOf(int command)
{
    return command == CMD_ASSIGN_CATEGORIES ? IDC_CATEGORY_LIST : IDC_CONTACT_LIST;
}

TEST_F(EntryEditorViewsTest, EveryViewLeadsToEveryOther)
{
    RunNew([&](EditorWindow& editor) {
        ExpectView(editor, CMD_EDIT_ENTRY_VIEW);
        for (const int command :
             {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS, CMD_ASSIGN_CATEGORIES, CMD_EDIT_ENTRY_VIEW,
              CMD_ASSIGN_CONTACTS, CMD_EDIT_ENTRY_VIEW, CMD_ASSIGN_CATEGORIES, CMD_EDIT_ENTRY_VIEW}) {
            editor.Command(command);
            ExpectView(editor, command);
        }
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorViewsTest, AListTakesTheBodysPlace)
{
    RunNew([&](EditorWindow& editor) {
        const RECT body = editor.Rect(IDC_BODY);
        for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS}) {
            editor.Command(command);
            ExpectSameRect(editor.Rect(ListOf(command)), body);
        }
        editor.Command(CMD_EDIT_ENTRY_VIEW);
        ExpectSameRect(editor.Rect(IDC_BODY), body);
    });
}

TEST_F(EntryEditorViewsTest, TheViewThatIsThereAlreadyStays)
{
    RunNew([&](EditorWindow& editor) {
        for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS}) {
            editor.Command(command);
            HWND list = editor.Item(ListOf(command));
            editor.Command(command);
            EXPECT_EQ(GetDlgItem(editor.Window(), ListOf(command)), list);
            ExpectView(editor, command);
        }
    });
}

TEST_F(EntryEditorViewsTest, ViewsThatAreLookedAtAndLeftChangeNothing)
{
    CEOID id = AddEntry({m_home}, {m_ann});
    const MessageBoxAnswerer boxes;
    Run(&id, [&](EditorWindow& editor) {
        for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS, CMD_EDIT_ENTRY_VIEW,
                                  CMD_ASSIGN_CONTACTS, CMD_ASSIGN_CATEGORIES}) {
            editor.Command(command);
            EXPECT_FALSE(editor.SaveEnabled()) << command;
            if (command == CMD_EDIT_ENTRY_VIEW)
                continue;
            editor.Focus(ListOf(command));
            for (const WORD key : {WORD{VK_DOWN}, WORD{VK_UP}, WORD{VK_END}, WORD{VK_HOME}})
                editor.Key(key);
            EXPECT_FALSE(editor.SaveEnabled()) << command;
        }
        editor.Cancel();
    });
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(EntryEditorViewsTest, TheBodysTextIsThereAgain)
{
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"Text");
        editor.Command(CMD_ASSIGN_CATEGORIES);
        editor.Command(CMD_ASSIGN_CONTACTS);
        editor.Command(CMD_EDIT_ENTRY_VIEW);
        EXPECT_EQ(editor.Text(IDC_BODY), L"Text");
    });
}

TEST_F(EntryEditorViewsTest, TheFocusGoesFromOneViewToTheOther)
{
    RunNew([&](EditorWindow& editor) {
        editor.Focus(IDC_BODY);
        editor.Command(CMD_ASSIGN_CATEGORIES);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_CATEGORY_LIST));
        editor.Command(CMD_ASSIGN_CONTACTS);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_CONTACT_LIST));
        editor.Command(CMD_EDIT_ENTRY_VIEW);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_BODY));
        editor.Focus(IDC_SUBJECT);
        editor.Command(CMD_ASSIGN_CATEGORIES);
        EXPECT_EQ(GetFocus(), editor.Field(IDC_SUBJECT));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorViewsTest, TheTabKeyFindsTheListWhereTheBodyWas)
{
    RunNew([&](EditorWindow& editor) {
        for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS}) {
            editor.Command(command);
            HWND list = editor.Item(ListOf(command));
            EXPECT_EQ(GetNextDlgTabItem(editor.Window(), editor.Item(IDC_EDITOR_BAR), FALSE), list);
            EXPECT_EQ(GetNextDlgTabItem(editor.Window(), list, FALSE), editor.Item(IDOK));
        }
    });
}

TEST_F(EntryEditorViewsTest, TheBarsButtonsAreReachedAndPressedByKeys)
{
    RunNew([&](EditorWindow& editor) {
        editor.Focus(IDC_EDITOR_BAR);
        editor.Key(VK_END);
        editor.Key(VK_SPACE);
        ExpectView(editor, CMD_ASSIGN_CONTACTS);
        editor.Key(VK_LEFT);
        editor.Key(VK_RETURN);
        ExpectView(editor, CMD_ASSIGN_CATEGORIES);
        editor.Key(VK_TAB);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_CATEGORY_LIST));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorViewsTest, TheKeysOfCommandsWorkInTheLists)
{
    CEOID id = AddEntry({m_home}, {m_ann});
    for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS})
        RunIn(&id, command, [&](EditorWindow& editor) {
            const std::wstring text = std::to_wstring(command);
            editor.Enter(IDC_SUBJECT, text);
            editor.Focus(ListOf(command));
            editor.Key('T', true);
            EXPECT_EQ(editor.Text(IDC_BODY), L"At noon") << "the time stamp is grey";
            editor.Key('S', true);
            EXPECT_FALSE(editor.SaveEnabled()) << command;
            EXPECT_EQ(Read(id).subject, text);
            ExpectView(editor, command);
        });
}

TEST_F(EntryEditorViewsTest, OkAndCancelDestroyTheLists)
{
    for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS})
        for (const int end : {IDOK, IDCANCEL}) {
            const int result = RunNewIn(command, [&](EditorWindow& editor) {
                editor.Command(end);
                EXPECT_EQ(GetDlgItem(editor.Window(), IDC_CATEGORY_LIST), nullptr) << command << " " << end;
                EXPECT_EQ(GetDlgItem(editor.Window(), IDC_CONTACT_LIST), nullptr) << command << " " << end;
            });
            EXPECT_EQ(result, end == IDOK ? 1 : 0);
        }
}

TEST_F(EntryEditorViewsTest, ACancelThatIsTakenBackLeavesTheListOpen)
{
    const MessageBoxAnswerer boxes({IDNO});
    RunNewIn(CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        editor.Cancel();
        ExpectView(editor, CMD_ASSIGN_CATEGORIES);
        EXPECT_TRUE(Categories(editor).IsChecked(L"Home"));
        EXPECT_TRUE(editor.SaveEnabled());
    });
    EXPECT_EQ(boxes.Boxes().size(), 1u);
}

TEST_F(EntryEditorViewsTest, ASettingsChangeMakesRoomForTheLineBelowAList)
{
    for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS}) {
        Own().SetNumber(kOptions, L"DispCats", 0);
        RunNewIn(command, [&](EditorWindow& editor) {
            const int list = ListOf(command);
            const RECT before = editor.Rect(list);
            Own().SetNumber(kOptions, L"DispCats", 1);
            editor.TellOfChange(L"intl");
            const RECT after = editor.Rect(list);
            EXPECT_EQ(after.bottom, before.bottom - Scale(22));
            EXPECT_EQ(after.top, before.top);
            EXPECT_EQ(after.right, before.right);
            EXPECT_EQ(editor.Rect(IDC_CATEGORIES_LABEL).top, after.bottom + Scale(5));
            EXPECT_EQ(editor.Rect(IDC_CATEGORIES_LINE).left,
                      editor.Rect(IDC_CATEGORIES_LABEL).right + Scale(5));
            EXPECT_TRUE(IsWindowVisible(editor.Item(IDC_CATEGORIES_LINE)));
            ExpectView(editor, command);

            Own().SetNumber(kOptions, L"DispCats", 0);
            editor.TellOfChange(L"intl");
            ExpectSameRect(editor.Rect(list), after);
            EXPECT_FALSE(IsWindowVisible(editor.Item(IDC_CATEGORIES_LINE)));
            editor.Command(CMD_EDIT_ENTRY_VIEW);
            ExpectSameRect(editor.Rect(IDC_BODY), after);
            EXPECT_FALSE(editor.SaveEnabled());
        });
    }
}

RECT SmallerArea(int narrower, int lower)
{
    const RECT area = WorkArea();
    return {area.left, area.top + lower, area.right - narrower, area.bottom};
}

TEST_F(EntryEditorViewsTest, AChangedWorkAreaMovesTheListWithTheBody)
{
    RunNewIn(CMD_ASSIGN_CONTACTS, [&](EditorWindow& editor) {
        const RECT before = editor.Rect(IDC_CONTACT_LIST);
        const ScopedWorkArea area(editor.Window(), SmallerArea(60, 40));
        ExpectSameRect(editor.Rect(IDC_CONTACT_LIST), editor.Rect(IDC_BODY));
        EXPECT_LT(editor.Rect(IDC_CONTACT_LIST).right, before.right);
        ExpectView(editor, CMD_ASSIGN_CONTACTS);
    });
}

TEST_F(EntryEditorViewsTest, AListBelowTheWindowsEdgeScrollsIntoSightWithTheFocus)
{
    const int low = static_cast<int>(WorkArea().bottom - WorkArea().top) - Scale(90);
    RunNewIn(CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        const ScopedWorkArea area(editor.Window(), SmallerArea(0, low));
        editor.Focus(IDC_START_DATE);
        RECT client{};
        GetClientRect(editor.Window(), &client);
        ASSERT_GT(editor.Rect(IDC_CATEGORY_LIST).bottom, client.bottom);
        editor.Focus(IDC_CATEGORY_LIST);
        EXPECT_LE(editor.Rect(IDC_CATEGORY_LIST).bottom, client.bottom);
        editor.Command(CMD_ASSIGN_CONTACTS);
        ExpectSameRect(editor.Rect(IDC_CONTACT_LIST), editor.Rect(IDC_BODY));
        EXPECT_LE(editor.Rect(IDC_CONTACT_LIST).bottom, client.bottom);
    });
}

// As the store tells the editor of what another program has written.
void TellOfChange(EditorWindow& editor, WPARAM code, LPARAM id = 0)
{
    SendMessageW(editor.Window(), kMsgDatabaseChange, code, id);
}

TEST_F(EntryEditorViewsTest, WhatAnotherProgramChangesShowsInTheLists)
{
    RunNewIn(CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        Categories(editor).Check(L"Home", true);
        AddCategory(L"Added");
        TellOfChange(editor, kChangeWorkBegins);
        TellOfChange(editor, kChangeWorkEnded, 1);
        EXPECT_EQ(Categories(editor).Count(), 1);
        TellOfChange(editor, kChangeCreated, 1);
        EXPECT_EQ(Categories(editor).Count(), 2);
        EXPECT_TRUE(Categories(editor).IsChecked(L"Home"));
        // What follows soon is shown together, a little later.
        DeleteCategory(m_home);
        TellOfChange(editor, kChangeDeleted, 1);
        EXPECT_TRUE(PumpUntil([&] { return Categories(editor).Count() == 1; }));
        EXPECT_EQ(Line(editor), L"<None>");

        editor.Command(CMD_ASSIGN_CONTACTS);
        AddContact(L"Bo");
        TellOfChange(editor, kChangeWorkEnded);
        EXPECT_TRUE(PumpUntil([&] { return Contacts(editor).Count() == 2; }));
        ExpectView(editor, CMD_ASSIGN_CONTACTS);
    });
}

// As another program tells of a record that it has written into the table of that number.
void TellElsewhere(const std::wstring& path, WPARAM table)
{
    HWND hub = FindWindowExW(HWND_MESSAGE, nullptr, L"MervaneStore", mervane::PathKey(path).c_str());
    EXPECT_NE(hub, nullptr);
    PostMessageW(hub, RegisterWindowMessageW(L"MervaneStoreChange"), kChangeCreated | table << 8, 7);
}

TEST_F(EntryEditorViewsTest, TheStoreTellsTheEditorOfBoth)
{
    RunNewIn(CMD_ASSIGN_CATEGORIES, [&](EditorWindow& editor) {
        EXPECT_TRUE(ChangeStore("INSERT INTO categories(name) VALUES('Added')"));
        TellElsewhere(m_store.Path(), 1);
        EXPECT_TRUE(PumpUntil([&] { return Categories(editor).Count() == 2; }));
        editor.Command(CMD_ASSIGN_CONTACTS);
        EXPECT_TRUE(ChangeStore("INSERT INTO contacts(file_as) VALUES('Bo')"));
        TellElsewhere(m_store.Path(), 2);
        EXPECT_TRUE(PumpUntil([&] { return Contacts(editor).Count() == 2; }));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorViewsTest, TheFirstContactAndTheLastOneMakeTheListAnew)
{
    RunNewIn(CMD_ASSIGN_CONTACTS, [&](EditorWindow& editor) {
        const RECT place = editor.Rect(IDC_CONTACT_LIST);
        editor.Focus(IDC_CONTACT_LIST);
        DbContacts contacts;
        ASSERT_TRUE(contacts.Open());
        ASSERT_TRUE(contacts.DeleteRecord(m_ann));
        TellOfChange(editor, kChangeDeleted);
        EXPECT_TRUE(PumpUntil([&] { return Contacts(editor).Text(0) == L"<No contacts>"; }));
        ASSERT_EQ(Contacts(editor).Count(), 1);
        AddContact(L"Bo");
        TellOfChange(editor, kChangeCreated);
        EXPECT_TRUE(PumpUntil([&] { return Contacts(editor).Text(0) == L"Bo"; }));
        ASSERT_EQ(Contacts(editor).Count(), 1);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_CONTACT_LIST));
        EXPECT_EQ(GetNextDlgTabItem(editor.Window(), editor.Item(IDC_EDITOR_BAR), FALSE), GetFocus());
        ExpectSameRect(editor.Rect(IDC_CONTACT_LIST), place);
        ExpectView(editor, CMD_ASSIGN_CONTACTS);
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorViewsTest, AViewWhoseListCannotBeMadeIsNotSwitchedTo)
{
    RunNew([&](EditorWindow& editor) {
        {
            const WindowRefuser refused(WC_LISTVIEWW);
            for (const int command : {CMD_ASSIGN_CATEGORIES, CMD_ASSIGN_CONTACTS}) {
                editor.Command(command);
                ExpectView(editor, CMD_EDIT_ENTRY_VIEW);
            }
        }
        editor.Command(CMD_ASSIGN_CONTACTS);
        ExpectView(editor, CMD_ASSIGN_CONTACTS);
        const WindowRefuser refused(WC_LISTVIEWW);
        editor.Command(CMD_ASSIGN_CATEGORIES);
        ExpectView(editor, CMD_ASSIGN_CONTACTS);
        DbContacts contacts;
        ASSERT_TRUE(contacts.Open());
        ASSERT_TRUE(contacts.DeleteRecord(m_ann));
        TellOfChange(editor, kChangeDeleted);
        ExpectView(editor, CMD_EDIT_ENTRY_VIEW);
    });
}

// The editor with its input panel's hook seen.
class PanelEditor : public EntryEditor {
  public:
    using EntryEditor::EntryEditor;
    void ShowInputPanel(bool show) override { shown.push_back(show); }
    std::vector<bool> shown;
};

TEST_F(EntryEditorViewsTest, TheInputPanelIsForTheBodyAndOnlyWhenAskedFor)
{
    constexpr DWORD kMissing = 2;
    for (const DWORD asked : {kMissing, 1ul, 0ul}) {
        if (asked != kMissing)
            Own().SetNumber(kOptions, L"DynSIP", asked);
        CEOID id = 0;
        PanelEditor panel(Own(), &id);
        ModalDriver driver([&](HWND window) {
            for (const int command :
                 {CMD_ASSIGN_CATEGORIES, CMD_EDIT_ENTRY_VIEW, CMD_ASSIGN_CONTACTS, CMD_EDIT_ENTRY_VIEW})
                SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
            SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
        });
        panel.DoModal(GetModuleHandleW(nullptr), IDD_ENTRY_EDITOR, nullptr);
        const std::vector<bool> all{true, false, true, false, true, false};
        EXPECT_EQ(panel.shown, asked ? all : std::vector<bool>{}) << asked;
    }
}

using Steps = std::vector<std::wstring>;

Steps g_steps;
decltype(&EndDialog) g_endDialog = nullptr;

// The same, noted among the other steps of the end.
class LeavingEditor : public EntryEditor {
  public:
    using EntryEditor::EntryEditor;
    void ShowInputPanel(bool show) override
    {
        if (!show)
            g_steps.push_back(L"panel");
    }
};

BOOL WINAPI NoteEnd(HWND dialog, INT_PTR result)
{
    g_steps.push_back(L"end " + std::to_wstring(result));
    return g_endDialog(dialog, result);
}

int WINAPI NoteQuestion(HWND, LPCWSTR, LPCWSTR, UINT)
{
    g_steps.push_back(L"question");
    return IDYES;
}

LRESULT CALLBACK NoteSent(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (sent.message == WM_DESTROY && GetDlgCtrlID(sent.hwnd) == IDC_CATEGORY_LIST)
        g_steps.push_back(L"list");
    if (sent.message == TB_CHECKBUTTON && sent.wParam == CMD_TIMER)
        g_steps.push_back(LOWORD(sent.lParam) ? L"timer" : L"no timer");
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// What a changed new entry does in its view of categories when the button is pressed.
Steps StepsOf(int button)
{
    g_endDialog = __imp_EndDialog;
    const ImportWatch<decltype(&EndDialog)> ends(&__imp_EndDialog, NoteEnd);
    const ImportWatch<decltype(&MessageBoxW)> boxes(&__imp_MessageBoxW, NoteQuestion);
    CEOID id = 0;
    LeavingEditor leaving(Own(), &id);
    ModalDriver driver([&](HWND window) {
        const EditorWindow editor(window);
        editor.Enter(IDC_SUBJECT, L"Call");
        editor.Command(CMD_ASSIGN_CATEGORIES);
        g_steps.clear();
        const SettingsLog log([](const std::wstring& name) {
            if (name == L"selType")
                g_steps.push_back(L"save");
        });
        const ThreadHook hook(WH_CALLWNDPROC, NoteSent);
        SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
    });
    leaving.DoModal(GetModuleHandleW(nullptr), IDD_ENTRY_EDITOR, nullptr);
    return g_steps;
}

// The timer is the save's own matter.
Steps StepsOfOk()
{
    Steps steps = StepsOf(IDOK);
    std::erase(steps, L"no timer");
    return steps;
}

TEST_F(EntryEditorViewsTest, OkHidesThePanelSavesAndTakesTheListsAway)
{
    EXPECT_EQ(StepsOfOk(), (Steps{L"panel", L"save", L"list", L"end 1"}));
}

TEST_F(EntryEditorViewsTest, CancelAsksTakesTheListsAwayAndStopsTheTimer)
{
    EXPECT_EQ(StepsOf(IDCANCEL), (Steps{L"question", L"list", L"panel", L"no timer", L"end 0"}));
}

TEST_F(EntryEditorViewsTest, WithoutThePanelsOptionOkLeavesItAlone)
{
    Own().SetNumber(kOptions, L"DynSIP", 0);
    EXPECT_EQ(StepsOfOk(), (Steps{L"save", L"list", L"end 1"}));
}

} // namespace
