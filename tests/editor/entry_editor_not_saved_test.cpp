// What the editor does where it cannot read, cannot save, or would save over what another program has
// written.
#include <optional>

#include "editor/editor_rescue.h"
#include "entry_editor_save_fixture.h"
#include "mervane/db_categories.h"
#include "support/import_watch.h"
#include "support/locked_store.h"
#include "support/preset_answer.h"
#include "support/rescue_folder.h"
#include "support/while_asked.h"
#include "support/while_waiting.h"

namespace {

constexpr const wchar_t* kLocked =
    L"The entry was not saved: another program keeps the journal's file locked.\n\n"
    L"Nothing that was stored before is lost, and what you have typed is still there.";

// Changes the body as a person does, wherever the keyboard is.
void AddToBody(const EditorWindow& editor, const wchar_t* text)
{
    editor.Ask(IDC_BODY, EM_SETSEL, 0, -1);
    editor.Ask(IDC_BODY, EM_SETSEL, static_cast<WPARAM>(-1), 0);
    editor.Ask(IDC_BODY, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
}

TEST_F(EntryEditorSaveTest, AFailedSaveKeepsTheChange)
{
    const MessageBoxAnswerer boxes;
    CEOID id = Write(Full());
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        {
            const LockedStore trouble(m_store.Path());
            editor.Command(CMD_SAVE);
        }
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Read(id).subject, L"Lunch");
        editor.Command(CMD_SAVE);
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(Read(id).subject, L"Dinner");
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, kLocked);
}

TEST_F(EntryEditorSaveTest, OkStaysOpenOverAFailedWriteAndSaysWhy)
{
    const MessageBoxAnswerer boxes;
    HWND window = nullptr;
    CEOID id = 0;
    bool stayed = false;
    const int result = Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Enter(IDC_BODY, L"Text");
        editor.Enter(IDC_DURATION, L"15");
        {
            const LockedStore trouble(m_store.Path());
            editor.Ok();
        }
        window = editor.Window();
        stayed = IsWindowVisible(editor.Window()) && IsWindowEnabled(editor.Window());
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Dinner");
        EXPECT_EQ(editor.Text(IDC_BODY), L"Text");
        EXPECT_EQ(id, 0u);
        editor.Ok();
    });
    EXPECT_TRUE(stayed);
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, kLocked);
    EXPECT_EQ(boxes.Boxes()[0].owner, window);
    EXPECT_EQ(boxes.Boxes()[0].answers, std::vector{IDOK});
    EXPECT_EQ(result, 1);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(id).subject, L"Dinner");
    EXPECT_EQ(Read(id).duration, Minutes(15));
}

TEST_F(EntryEditorSaveTest, OkStaysOpenWhenTheSecondWriteFails)
{
    const MessageBoxAnswerer boxes;
    CEOID id = 0;
    const int result = Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"One");
        editor.Command(CMD_SAVE);
        ASSERT_NE(id, 0u);
        editor.Enter(IDC_SUBJECT, L"Two");
        {
            const LockedStore trouble(m_store.Path());
            editor.Ok();
        }
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Read(id).subject, L"One");
        editor.Ok();
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, kLocked);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(id).subject, L"Two");
}

TEST_F(EntryEditorSaveTest, ARecordThatCannotBeReadIsNotOpened)
{
    CEOID id = Write(Full());
    ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME TO away"));
    const MessageBoxAnswerer boxes;
    EXPECT_EQ(OpenEntryEditor(Own(), nullptr, &id), 0);
    ASSERT_TRUE(ChangeStore("ALTER TABLE away RENAME TO journal"));
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_TRUE(boxes.Boxes()[0].text.starts_with(L"The entry was not opened: "))
        << boxes.Boxes()[0].text.size();
    EXPECT_EQ(Read(id).subject, L"Lunch");
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EntryEditorSaveTest, WhereNothingCanBeWrittenACopyIsOffered)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes({IDNO});
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME TO away"));
        editor.Command(CMD_SAVE);
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Dinner");
        ASSERT_TRUE(ChangeStore("ALTER TABLE away RENAME TO journal"));
        editor.Ok();
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_TRUE(boxes.Boxes()[0].text.starts_with(L"The entry was not saved: "));
    EXPECT_TRUE(boxes.Boxes()[0].text.ends_with(L"Save a copy of it as a text file?"));
    EXPECT_EQ(boxes.Boxes()[0].answers, (std::vector{IDYES, IDNO}));
    EXPECT_EQ(Read(id).subject, L"Dinner");
}

// What another program has written since the entry was opened is not overwritten unasked.
TEST_F(EntryEditorSaveTest, AnEntryThatAnotherProgramChangedAsksBeforeItIsSaved)
{
    CEOID id = Write(Full());
    const CEOID theirs = id;
    const MessageBoxAnswerer boxes({IDCANCEL, IDNO});
    const PresetAnswer preset;
    HWND window = nullptr;
    const int result = Run(&id, [&](EditorWindow& editor) {
        window = editor.Window();
        editor.Enter(IDC_SUBJECT, L"Mine");
        ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Theirs'"));
        editor.Ok();
        EXPECT_TRUE(IsWindowVisible(window)) << "Cancel goes back";
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Read(theirs).subject, L"Theirs");
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Mine");
        editor.Ok();
    });
    EXPECT_EQ(result, 1);
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    EXPECT_EQ(boxes.Boxes()[0].owner, window);
    EXPECT_EQ(boxes.Boxes()[0].answers, (std::vector{IDCANCEL, IDYES, IDNO}));
    EXPECT_EQ(preset.Id(), IDNO) << "a key that is still pressed overwrites nothing";
    EXPECT_TRUE(
        boxes.Boxes()[0].text.starts_with(L"This entry was changed by another program since you opened it."));
    EXPECT_EQ(Read(theirs).subject, L"Theirs") << "No keeps both";
    EXPECT_NE(id, theirs);
    EXPECT_EQ(Read(id).subject, L"Mine");
    EXPECT_EQ(Count(), 2u);
}

TEST_F(EntryEditorSaveTest, YesSavesInPlaceOfAnotherProgramsChange)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes({IDYES});
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Mine");
        ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Theirs', priority = 0"));
        editor.Command(CMD_SAVE);
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(Read(id).subject, L"Mine");
        editor.Enter(IDC_BODY, L"More");
        editor.Ok();
    });
    EXPECT_EQ(boxes.Boxes().size(), 1u) << "its own save is no foreign change";
    EXPECT_EQ(Read(id).body, L"More");
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EntryEditorSaveTest, WhatChangesBehindTheQuestionIsAskedAboutToo)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes({IDYES, IDYES, IDCANCEL});
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Mine");
        ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Theirs'"));
        {
            const WhileAsked change(
                [&] { EXPECT_TRUE(ChangeStore("UPDATE journal SET body = 'Theirs too'")); });
            editor.Command(CMD_SAVE);
        }
        EXPECT_EQ(boxes.Boxes().size(), 2u);
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(Read(id).subject, L"Mine");

        editor.Enter(IDC_SUBJECT, L"Mine again");
        ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Theirs'"));
        editor.Command(CMD_SAVE);
        EXPECT_TRUE(editor.SaveEnabled()) << "Cancel goes back";
        EXPECT_EQ(Read(id).subject, L"Theirs");
    });
    EXPECT_EQ(boxes.Boxes().size(), 3u);
}

template <int kControl> int WINAPI NoText(HWND window, LPWSTR text, int size)
{
    if (GetDlgCtrlID(window) != kControl)
        return static_cast<int>(
            SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(text)));
    text[0] = L'\0';
    return 0;
}

TEST_F(EntryEditorSaveTest, ABodyThatCannotBeHadIsNotSavedAsAnEmptyOne)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        {
            const ImportWatch<decltype(&GetWindowTextW)> none(&__imp_GetWindowTextW, NoText<IDC_BODY>);
            editor.Command(CMD_SAVE);
        }
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(Read(id).body, L"First\r\nSecond");
        EXPECT_EQ(Read(id).subject, L"Lunch");
        editor.Ok();
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text,
              L"The entry was not saved: there is not enough memory.\n\n"
              L"Nothing that was stored before is lost, and what you have typed is still there.");
    EXPECT_EQ(Read(id).body, L"First\r\nSecond");
    EXPECT_EQ(Read(id).subject, L"Dinner");
}

TEST_F(EntryEditorSaveTest, ADurationThatCannotBeHadIsNotSavedAsAnother)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_DURATION, L"2 hours");
        {
            const ImportWatch<decltype(&GetWindowTextW)> none(&__imp_GetWindowTextW, NoText<IDC_DURATION>);
            editor.Command(CMD_SAVE);
            editor.Focus(IDC_BODY);
        }
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(editor.Text(IDC_DURATION), L"2 hours");
        EXPECT_EQ(Read(id).duration, Minutes(90));
        editor.Command(CMD_SAVE);
        EXPECT_EQ(Read(id).duration, Minutes(120)) << "wherever the keyboard is";
        EXPECT_FALSE(editor.SaveEnabled());
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_TRUE(boxes.Boxes()[0].text.starts_with(L"The entry was not saved: there is not enough memory."));
}

// What lies in the folder, where that is all.
std::optional<RescueState> PutAside(const RescueFolder& folder)
{
    const auto files = folder.Files(L".rescue");
    return files.size() == 1 ? ReadRescue(ReadFileBytes(files[0])) : std::nullopt;
}

TEST_F(EntryEditorSaveTest, ADurationThatCannotBeHadIsPutAsideAsItWas)
{
    const RescueFolder folder;
    CEOID id = Write(Full());
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_DURATION, L"2 hours");
        const ImportWatch<decltype(&GetWindowTextW)> none(&__imp_GetWindowTextW, NoText<IDC_DURATION>);
        SendMessageW(editor.Window(), WM_TIMER, EditorRescue::kTimer, 0);
    });
    const auto state = PutAside(folder);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->entry.duration, Minutes(90));
}

// The timer ticks on, and another program may work the controls.
TEST_F(EntryEditorSaveTest, WhatChangesBehindTheQuestionIsSavedToo)
{
    for (const int answer : {IDYES, IDNO}) {
        CEOID id = Write(Full());
        const MessageBoxAnswerer boxes({answer});
        Run(&id, [&](EditorWindow& editor) {
            editor.Enter(IDC_SUBJECT, L"Mine");
            ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Theirs'"));
            const WhileAsked change([&] { AddToBody(editor, L" added"); });
            editor.Command(CMD_SAVE);
        });
        EXPECT_EQ(boxes.Boxes().size(), 1u);
        EXPECT_EQ(Read(id).subject, L"Mine");
        EXPECT_EQ(Read(id).body, L"First\r\nSecond added") << answer;
    }
}

LSTATUS WINAPI RefuseType(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size)
{
    return wcscmp(name, L"selType") == 0 ? ERROR_ACCESS_DENIED
                                         : RegSetKeyValueW(key, nullptr, name, type, data, size + reserved);
}

TEST_F(EntryEditorSaveTest, WhatChangesBehindTheBoxOfTheSettingsIsSavedToo)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Mine");
        const ImportWatch<decltype(&RegSetValueExW)> refused(&__imp_RegSetValueExW, RefuseType);
        const WhileAsked change([&] { AddToBody(editor, L" added"); });
        editor.Command(CMD_SAVE);
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Error");
    EXPECT_EQ(Read(id).subject, L"Mine");
    EXPECT_EQ(Read(id).body, L"First\r\nSecond added");
}

// As where the main window is destroyed, and the editor with it.
TEST_F(EntryEditorSaveTest, ASaveEndsWithItsWindow)
{
    using Save = std::function<void()>;
    const auto refuse = [](const Save& save) {
        const ImportWatch<decltype(&RegSetValueExW)> refused(&__imp_RegSetValueExW, RefuseType);
        save();
    };
    const auto change = [&](const Save& save) {
        ASSERT_TRUE(ChangeStore("UPDATE journal SET subject = 'Theirs'"));
        save();
    };
    const auto lock = [&](const Save& save) {
        const LockedStore trouble(m_store.Path());
        save();
    };
    for (const auto& within : std::initializer_list<std::function<void(const Save&)>>{refuse, change, lock}) {
        const RescueFolder folder;
        CEOID id = Write(Full());
        const MessageBoxAnswerer boxes({IDYES});
        Run(&id, [&](EditorWindow& editor) {
            HWND window = editor.Window();
            editor.Enter(IDC_SUBJECT, L"Mine");
            SendMessageW(window, WM_TIMER, EditorRescue::kTimer, 0);
            const WhileAsked destroy([&] { DestroyWindow(window); });
            within([&] { SendMessageW(window, WM_COMMAND, IDOK, 0); });
            EXPECT_FALSE(IsWindow(window));
        });
        EXPECT_LE(boxes.Boxes().size(), 1u) << "one may go before it is answered";
        EXPECT_NE(Read(id).subject, L"Mine");
        EXPECT_EQ(folder.Unsaved(), 1u) << "what is not saved stays";
    }
}

TEST_F(EntryEditorSaveTest, WhatChangesWhileASaveWaitsIsStillAChange)
{
    const RescueFolder folder;
    CEOID id = Write(Full());
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Mine");
        SendMessageW(editor.Window(), WM_TIMER, EditorRescue::kTimer, 0);
        {
            const WhileWaiting wait(m_store.Path(), [&] { AddToBody(editor, L" added"); });
            editor.Command(CMD_SAVE);
        }
        EXPECT_EQ(Read(id).subject, L"Mine");
        EXPECT_TRUE(editor.SaveEnabled());
        EXPECT_EQ(folder.Unsaved(), 1u) << "what was put aside stays";
        editor.Command(CMD_SAVE);
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(folder.Unsaved(), 0u);
    });
    EXPECT_EQ(Read(id).body, L"First\r\nSecond added");
}

TEST_F(EntryEditorSaveTest, OkDoesNotCloseOverWhatChangesWhileItWaits)
{
    DbCategories categories;
    ASSERT_TRUE(categories.Open());
    const CEPROPVAL name = TextValue(kCategoriesKey, L"Home");
    DWORD blob[] = {1, categories.WriteRecord(0, 1, &name)};
    EntryToWrite entry = Full();
    entry.categories = {sizeof blob, reinterpret_cast<BYTE*>(blob)};
    CEOID id = Write(entry);
    const auto before = Read(id).categories;
    ASSERT_TRUE(before);
    const int result = Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Mine");
        const WhileWaiting wait(m_store.Path(), [&] { AddToBody(editor, L" added"); });
        editor.Ok();
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(Read(id).body, L"First\r\nSecond added");
    EXPECT_EQ(Read(id).categories, before) << "it is one save to the person";
}

std::function<void()> g_whileAskedForFile;
std::wstring g_chosenFile;

BOOL WINAPI ChooseFile(LPOPENFILENAMEW dialog)
{
    g_whileAskedForFile();
    wcscpy(dialog->lpstrFile, g_chosenFile.c_str());
    return TRUE;
}

TEST_F(EntryEditorSaveTest, ACopyHasWhatChangedBehindItsBoxes)
{
    CEOID id = Write(Full());
    g_chosenFile = m_store.Path() + L".txt";
    const MessageBoxAnswerer boxes({IDYES});
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Mine");
        ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME TO away"));
        g_whileAskedForFile = [&] { AddToBody(editor, L" file"); };
        const ImportWatch<decltype(&GetSaveFileNameW)> file(&__imp_GetSaveFileNameW, ChooseFile);
        const WhileAsked change([&] { AddToBody(editor, L" box"); });
        editor.Command(CMD_SAVE);
        ASSERT_TRUE(ChangeStore("ALTER TABLE away RENAME TO journal"));
    });
    const std::string copy = ReadFileBytes(g_chosenFile);
    EXPECT_NE(copy.find("First\r\nSecond box file"), std::string::npos) << copy;
    EXPECT_TRUE(DeleteFileW(g_chosenFile.c_str()));
}

TEST_F(EntryEditorSaveTest, ACopyOfABodyThatCannotBeHadIsNotWritten)
{
    CEOID id = Write(Full());
    g_chosenFile = m_store.Path() + L".txt";
    const MessageBoxAnswerer boxes({IDYES, IDOK, IDYES});
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Mine");
        ASSERT_TRUE(ChangeStore("ALTER TABLE journal RENAME TO away"));
        std::optional<ImportWatch<decltype(&GetWindowTextW)>> none;
        g_whileAskedForFile = [&] { none.emplace(&__imp_GetWindowTextW, NoText<IDC_BODY>); };
        {
            const ImportWatch<decltype(&GetSaveFileNameW)> file(&__imp_GetSaveFileNameW, ChooseFile);
            editor.Command(CMD_SAVE);
        }
        none.reset();
        ASSERT_TRUE(ChangeStore("ALTER TABLE away RENAME TO journal"));
    });
    ASSERT_GE(boxes.Boxes().size(), 2u);
    EXPECT_TRUE(boxes.Boxes()[1].text.starts_with(L"The copy could not be written."));
    EXPECT_EQ(GetFileAttributesW(g_chosenFile.c_str()), INVALID_FILE_ATTRIBUTES);
}

BOOL WINAPI ShowNoBody(HWND window, LPCWSTR text)
{
    if (GetDlgCtrlID(window) == IDC_BODY && wcscmp(text, L"<Entry Body>") != 0)
        return FALSE;
    return static_cast<BOOL>(SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)));
}

decltype(&SendMessageW) g_send = SendMessageW;

LRESULT WINAPI InsertNoLunch(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == CB_INSERTSTRING && wcscmp(reinterpret_cast<LPCWSTR>(lParam), L"Lunch") == 0)
        return CB_ERRSPACE;
    return g_send(window, message, wParam, lParam);
}

constexpr const wchar_t* kNotOpened =
    L"The entry was not opened: there is not enough memory.\n\nNothing that was stored before is lost.";

TEST_F(EntryEditorSaveTest, AnEntryWhoseTextsCannotBeShownIsNotOpened)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes;
    const ModalDriver opened([](HWND dialog) { EndDialog(dialog, 1); });
    {
        const ImportWatch<decltype(&SetWindowTextW)> none(&__imp_SetWindowTextW, ShowNoBody);
        EXPECT_EQ(OpenEntryEditor(Own(), nullptr, &id), 0);
    }
    {
        g_send = __imp_SendMessageW;
        const ImportWatch<decltype(&SendMessageW)> none(&__imp_SendMessageW, InsertNoLunch);
        EXPECT_EQ(OpenEntryEditor(Own(), nullptr, &id), 0);
    }
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    for (const auto& box : boxes.Boxes())
        EXPECT_EQ(box.text, kNotOpened);
    EXPECT_EQ(Read(id).subject, L"Lunch");
    EXPECT_EQ(Read(id).body, L"First\r\nSecond");
}

// As when there is no memory for it behind the dialog of the quick subjects.
void LoseSubject(const EditorWindow& editor)
{
    g_send = __imp_SendMessageW;
    const ImportWatch<decltype(&SendMessageW)> none(&__imp_SendMessageW, InsertNoLunch);
    const ModalDriver quickSubjects([](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
    editor.Ask(IDC_SUBJECT, CB_SETCURSEL, 0);
    editor.Command(IDC_SUBJECT, CBN_CLOSEUP);
    EXPECT_TRUE(quickSubjects.Ran());
}

TEST_F(EntryEditorSaveTest, ASubjectThatCannotBeShownAgainIsNotSavedAsNone)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes;
    Run(&id, [&](EditorWindow& editor) {
        LoseSubject(editor);
        editor.Command(CMD_SAVE);
        EXPECT_EQ(Read(id).subject, L"Lunch");
        editor.Enter(IDC_SUBJECT, L"Supper");
        editor.Ok();
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_TRUE(boxes.Boxes()[0].text.starts_with(L"The entry was not saved: there is not enough memory."));
    EXPECT_EQ(Read(id).subject, L"Supper");
}

TEST_F(EntryEditorSaveTest, ASubjectThatCannotBeShownAgainCostsNothingOfWhatIsPutAside)
{
    const RescueFolder folder;
    CEOID id = Write(Full());
    Run(&id, [&](EditorWindow& editor) {
        LoseSubject(editor);
        AddToBody(editor, L" added");
        SendMessageW(editor.Window(), WM_TIMER, EditorRescue::kTimer, 0);
    });
    const auto state = PutAside(folder);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->entry.body, L"First\r\nSecond added");
    EXPECT_EQ(state->entry.subject, L"Lunch") << "the one that could not be shown";
}

int g_beeps = 0;

BOOL WINAPI CountBeep(UINT)
{
    ++g_beeps;
    return TRUE;
}

// The box has a sound of its own.
TEST_F(EntryEditorSaveTest, AFailedSaveSoundsOnce)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes;
    g_beeps = 0;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        const LockedStore trouble(m_store.Path());
        const ImportWatch<decltype(&MessageBeep)> beeps(&__imp_MessageBeep, CountBeep);
        editor.Command(CMD_SAVE);
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].icon, LoadIconW(nullptr, IDI_EXCLAMATION));
    EXPECT_EQ(g_beeps, 0);
}

} // namespace
