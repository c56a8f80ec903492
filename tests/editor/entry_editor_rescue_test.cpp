// What an editor puts aside of an entry that is not saved, and how it goes on with it.
#include "assign_fixture.h"
#include "editor/editor_record.h"
#include "editor/editor_rescue.h"
#include "editor/stored_rescue.h"
#include "editor/value_pickers.h"
#include "editor_fixture.h"
#include "mervane/file/store_path.h"
#include "support/import_watch.h"
#include "support/locked_store.h"
#include "support/rescue_folder.h"

namespace {

class EntryEditorRescueTest : public EditorTest {
  protected:
    // As if its time had come.
    static void Tick(const EditorWindow& editor)
    {
        SendMessageW(editor.Window(), WM_TIMER, EditorRescue::kTimer, 0);
    }
    static std::vector<RescueFile> FindLeft()
    {
        return RescueFile::FindLeft(mervane::StoreNumber(mervane::StorePath()));
    }
    // Leaves an editor as a killed program does, with what the action has done in it put aside.
    void Abandon(CEOID id, const std::function<void(EditorWindow&)>& action)
    {
        EXPECT_EQ(Run(&id,
                      [&](EditorWindow& editor) {
                          action(editor);
                          Tick(editor);
                      }),
                  0);
        EXPECT_EQ(m_folder.Unsaved(), 1u);
    }
    // Opens what was left; *id as OpenRescuedEntry has it.
    int GoOn(CEOID* id, const std::function<void(EditorWindow&)>& action)
    {
        std::vector<RescueFile> left = FindLeft();
        EXPECT_EQ(left.size(), 1u);
        if (left.empty())
            return -1;
        std::optional<RescueState> state = left[0].Read();
        EXPECT_TRUE(state);
        const auto open = [&] {
            return INT_PTR{
                OpenRescuedEntry(Own(), nullptr, std::move(left[0]), state.value_or(RescueState()), id)};
        };
        const auto work = [&](HWND window) {
            EditorWindow editor(window);
            action(editor);
        };
        return static_cast<int>(RunDialog(open, work, -2));
    }
    CEOID WriteLunch()
    {
        EntryToWrite entry;
        entry.date = At(kTuesday);
        entry.endTime = At(kTuesday) + Minutes(90);
        entry.duration = Minutes(90);
        entry.type = L"Meeting";
        entry.body = L"Soup";
        entry.subject = L"Lunch";
        return Write(entry);
    }

    RescueFolder m_folder;
};

// Its first write leaves a new entry modified, but it is on disk.
TEST_F(EntryEditorRescueTest, ANewEntryThatWasWrittenIsNotPutAside)
{
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Command(CMD_SAVE);
        ASSERT_TRUE(editor.SaveEnabled());
        SendMessageW(editor.Window(), WM_ENDSESSION, TRUE, 0);
    });
    EXPECT_EQ(m_folder.Unsaved(), 0u);
    CEOID id = 0;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Command(CMD_SAVE);
        editor.Enter(IDC_BODY, L"More");
        SendMessageW(editor.Window(), WM_ENDSESSION, TRUE, 0);
    });
    EXPECT_EQ(m_folder.Unsaved(), 1u) << "what came after it is not";
}

TEST_F(EntryEditorRescueTest, AChangeIsOnDiskAFewSecondsLater)
{
    RunNew([&](EditorWindow& editor) {
        EXPECT_EQ(m_folder.Unsaved(), 0u);
        editor.Enter(IDC_SUBJECT, L"Dinner");
        EXPECT_TRUE(PumpUntil([&] { return m_folder.Unsaved() == 1; }));
        EXPECT_TRUE(FindLeft().empty()) << "it is in use";
    });
    const auto left = FindLeft();
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].Read()->entry.subject, L"Dinner");
}

TEST_F(EntryEditorRescueTest, AnEntryThatIsOnlyLookedAtLeavesNothing)
{
    CEOID id = WriteLunch();
    Run(&id, [&](EditorWindow& editor) {
        Tick(editor);
        SendMessageW(editor.Window(), WM_ENDSESSION, TRUE, 0);
        EXPECT_TRUE(m_folder.Files().empty());
    });
}

TEST_F(EntryEditorRescueTest, ASaveRemovesIt)
{
    for (CEOID id : {CEOID{0}, WriteLunch()})
        Run(&id, [&](EditorWindow& editor) {
            editor.Enter(IDC_SUBJECT, L"Dinner");
            Tick(editor);
            EXPECT_EQ(m_folder.Unsaved(), 1u);
            editor.Command(CMD_SAVE);
            EXPECT_TRUE(m_folder.Files().empty());
            Tick(editor);
            EXPECT_TRUE(m_folder.Files().empty());
            editor.Enter(IDC_SUBJECT, L"Supper");
            Tick(editor);
            EXPECT_EQ(m_folder.Unsaved(), 1u);
            editor.Ok();
            EXPECT_TRUE(m_folder.Files().empty());
        });
}

TEST_F(EntryEditorRescueTest, ASaveThatFailsKeepsIt)
{
    const LockedStore lock(m_store.Path());
    const MessageBoxAnswerer answerer({IDOK});
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        Tick(editor);
        editor.Ok();
        EXPECT_EQ(m_folder.Unsaved(), 1u);
    });
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(FindLeft().size(), 1u);
}

TEST_F(EntryEditorRescueTest, AnAnsweredCancelRemovesIt)
{
    const MessageBoxAnswerer answerer({IDNO, IDYES});
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        Tick(editor);
        editor.Cancel();
        EXPECT_EQ(m_folder.Unsaved(), 1u) << "No";
        editor.Cancel();
        EXPECT_TRUE(m_folder.Files().empty()) << "Yes";
    });
    EXPECT_EQ(answerer.Boxes().size(), 2u);
}

TEST_F(EntryEditorRescueTest, TheEndOfTheSessionWritesItAtOnce)
{
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        SendMessageW(editor.Window(), WM_ENDSESSION, TRUE, 0);
        EXPECT_EQ(m_folder.Unsaved(), 1u);
    });
}

// Not even digits that the picker has not taken yet.
TEST_F(EntryEditorRescueTest, TheEndOfTheSessionTakesWhatIsBeingTyped)
{
    RunNew([&](EditorWindow& editor) {
        editor.Focus(IDC_START_DATE);
        editor.Type(L"7");
        SendMessageW(editor.Window(), WM_ENDSESSION, TRUE, 0);
        EXPECT_EQ(m_folder.Unsaved(), 1u);
        EXPECT_TRUE(editor.HasFocus(IDC_START_DATE));
    });
    const auto left = FindLeft();
    ASSERT_EQ(left.size(), 1u);
    SYSTEMTIME date{};
    ASSERT_TRUE(left[0].Read()->entry.date.ToSystemTime(&date));
    EXPECT_EQ(date.wMonth, 7);
}

TEST_F(EntryEditorRescueTest, WhereItCannotBeWrittenNothingIsSaid)
{
    SetEnvironmentVariableW(L"APPDATA", nullptr);
    const MessageBoxAnswerer answerer({IDOK});
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        Tick(editor);
        editor.Ok();
    });
    EXPECT_TRUE(answerer.Boxes().empty());
    EXPECT_EQ(Count(), 1u);
}

BOOL WINAPI WriteNothing(HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED)
{
    *written = 0;
    return FALSE;
}

TEST_F(EntryEditorRescueTest, AWriteThatFailedIsTriedAgain)
{
    RunNew([&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        {
            const ImportWatch<decltype(&WriteFile)> full(&__imp_WriteFile, WriteNothing);
            Tick(editor);
            EXPECT_EQ(m_folder.Unsaved(), 0u);
        }
        EXPECT_TRUE(PumpUntil([&] { return m_folder.Unsaved() == 1; })) << "though nothing has changed";
    });
}

BOOL WINAPI DeleteNothing(LPCWSTR)
{
    SetLastError(ERROR_SHARING_VIOLATION);
    return FALSE;
}

// As a program that is killed in between leaves it, also where it had put aside something earlier.
TEST_F(EntryEditorRescueTest, BetweenTheSaveAndItsRemovalItHasWhatIsSaved)
{
    for (CEOID id : {CEOID{0}, WriteLunch()}) {
        const RescueFolder folder;
        const ImportWatch<decltype(&DeleteFileW)> held(&__imp_DeleteFileW, DeleteNothing);
        Run(&id, [&](EditorWindow& editor) {
            editor.Enter(IDC_SUBJECT, L"Din");
            Tick(editor);
            editor.Enter(IDC_SUBJECT, L"Dinner");
            editor.Enter(IDC_DURATION, L"2 hours");
            editor.Command(CMD_SAVE);
        });
        std::vector<RescueFile> left = FindLeft();
        ASSERT_EQ(left.size(), 1u);
        const RescueState state = left[0].Read().value_or(RescueState());
        EXPECT_EQ(state.entry.subject, L"Dinner");
        EXPECT_TRUE(IsStored(Own().Journal(), state));
        EXPECT_TRUE(Own().Journal().DeleteRecord(id));
        EXPECT_FALSE(IsStored(Own().Journal(), state));
    }
}

TEST_F(EntryEditorRescueTest, WhatCannotBeRemovedIsTriedAgain)
{
    for (const bool isAtTheEnd : {false, true}) {
        CEOID id = WriteLunch();
        Run(&id, [&](EditorWindow& editor) {
            editor.Enter(IDC_SUBJECT, L"Dinner");
            Tick(editor);
            {
                const ImportWatch<decltype(&DeleteFileW)> held(&__imp_DeleteFileW, DeleteNothing);
                editor.Command(CMD_SAVE);
            }
            EXPECT_EQ(m_folder.Unsaved(), 1u);
            if (isAtTheEnd)
                return;
            editor.Enter(IDC_BODY, L"More");
            EXPECT_TRUE(m_folder.Files().empty()) << "with the next change";
            Tick(editor);
            EXPECT_EQ(m_folder.Unsaved(), 1u);
            editor.Command(CMD_SAVE);
        });
        EXPECT_TRUE(m_folder.Files().empty()) << isAtTheEnd;
    }
}

BOOL WINAPI ShowNoBody(HWND window, LPCWSTR text)
{
    if (GetDlgCtrlID(window) == IDC_BODY)
        return FALSE;
    return static_cast<BOOL>(SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)));
}

TEST_F(EntryEditorRescueTest, WhatCannotBeShownStaysOnDisk)
{
    Abandon(0, [](EditorWindow& editor) { editor.Enter(IDC_BODY, L"Fish"); });
    std::vector<RescueFile> left = FindLeft();
    ASSERT_EQ(left.size(), 1u);
    const MessageBoxAnswerer answerer;
    CEOID id = 0;
    {
        const ImportWatch<decltype(&SetWindowTextW)> none(&__imp_SetWindowTextW, ShowNoBody);
        RescueState state = left[0].Read().value_or(RescueState());
        EXPECT_EQ(OpenRescuedEntry(Own(), nullptr, std::move(left[0]), std::move(state), &id), 0);
    }
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_TRUE(
        answerer.Boxes()[0].text.starts_with(L"The entry was not opened: there is not enough memory."));
    EXPECT_EQ(GoOn(&id, [](EditorWindow& editor) { editor.Ok(); }), 1);
    EXPECT_EQ(Read(id).body, L"Fish");
}

TEST_F(EntryEditorRescueTest, GoesOnWithANewEntry)
{
    Abandon(0, [&](EditorWindow& editor) {
        editor.Pick(IDC_START_DATE, {2024, 2, 4, 29, 14, 5, 30, 250});
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.ChooseInBox(IDC_TYPE, 3);
        editor.Enter(IDC_BODY, L"Fish\r\nand wine");
        editor.Choose(CMD_PRIORITY, PriorityChoices()[0].menuId);
        editor.Choose(CMD_SENSITIVITY, SensitivityChoices()[1].menuId);
        editor.Enter(IDC_DURATION, L"2 hours"); // which still has the keyboard
    });
    CEOID id = 0;
    EXPECT_EQ(GoOn(&id,
                   [&](EditorWindow& editor) {
                       EXPECT_TRUE(editor.SaveEnabled());
                       EXPECT_EQ(editor.Text(IDC_DURATION), L"2 hours");
                       EXPECT_EQ(m_folder.Unsaved(), 1u);
                       editor.Ok();
                   }),
              1);
    EXPECT_TRUE(m_folder.Files().empty());
    ASSERT_NE(id, 0u);
    const JournalEntry entry = Read(id);
    EXPECT_EQ(entry.date, At({2024, 2, 4, 29, 14, 5, 30, 250}));
    EXPECT_EQ(entry.duration, Minutes(120));
    EXPECT_EQ(entry.endTime, *entry.date + Minutes(120));
    EXPECT_EQ(entry.subject, L"Dinner");
    EXPECT_EQ(entry.type, L"Fax");
    EXPECT_EQ(entry.body, L"Fish\r\nand wine");
    EXPECT_EQ(entry.priority, PriorityChoices()[0].value);
    EXPECT_EQ(entry.sensitivity, SensitivityChoices()[1].value);
}

TEST_F(EntryEditorRescueTest, GoesOnWithARecord)
{
    const CEOID id = WriteLunch();
    Abandon(id, [](EditorWindow& editor) { editor.Enter(IDC_BODY, L"Soup and bread"); });
    CEOID opened = 0;
    EXPECT_EQ(GoOn(&opened, [](EditorWindow& editor) { editor.Ok(); }), 1);
    EXPECT_EQ(opened, id);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(id).body, L"Soup and bread");
    EXPECT_EQ(Read(id).subject, L"Lunch");
    EXPECT_EQ(Read(id).duration, Minutes(90));
}

TEST_F(EntryEditorRescueTest, StaysUntilItIsSavedOrGivenUp)
{
    Abandon(0, [](EditorWindow& editor) { editor.Enter(IDC_SUBJECT, L"Dinner"); });
    CEOID id = 0;
    GoOn(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Supper");
        Tick(editor);
        EXPECT_EQ(m_folder.Unsaved(), 1u) << "in place of the one before";
    });
    ASSERT_EQ(FindLeft().size(), 1u);
    EXPECT_EQ(FindLeft()[0].Read()->entry.subject, L"Supper");
    const MessageBoxAnswerer answerer({IDYES});
    GoOn(&id, [](EditorWindow& editor) { editor.Cancel(); });
    EXPECT_EQ(answerer.Boxes().size(), 1u) << "it counts as changed";
    EXPECT_TRUE(m_folder.Files().empty());
    EXPECT_EQ(Count(), 0u);
}

TEST_F(EntryEditorRescueTest, ARecordThatIsGoneIsWrittenAnew)
{
    const CEOID id = WriteLunch();
    Abandon(id, [](EditorWindow& editor) { editor.Enter(IDC_BODY, L"Soup and bread"); });
    ASSERT_TRUE(Own().Journal().DeleteRecord(id));
    CEOID opened = 0;
    EXPECT_EQ(GoOn(&opened, [](EditorWindow& editor) { editor.Ok(); }), 1);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(opened).body, L"Soup and bread");
    EXPECT_EQ(Read(opened).subject, L"Lunch");
}

TEST_F(EntryEditorRescueTest, ARecordThatWasChangedSinceIsAskedAbout)
{
    const CEOID id = WriteLunch();
    Abandon(id, [](EditorWindow& editor) { editor.Enter(IDC_BODY, L"Soup and bread"); });
    CEPROPVAL change{};
    change.propid = kPropBody;
    change.val.lpwstr = const_cast<wchar_t*>(L"Theirs");
    ASSERT_EQ(Own().Journal().WriteRecord(id, 1, &change), id);
    const MessageBoxAnswerer answerer({IDCANCEL, IDNO});
    CEOID opened = 0;
    GoOn(&opened, [&](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_BODY), L"Soup and bread");
        editor.Ok();
        EXPECT_EQ(m_folder.Unsaved(), 1u) << "not saved yet";
        editor.Ok();
    });
    EXPECT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(Count(), 2u);
    EXPECT_EQ(Read(id).body, L"Theirs");
    EXPECT_EQ(Read(opened).body, L"Soup and bread");
}

// Of two categories one is released and a third one assigned; a fourth one, and a contact, are gone when it
// goes on.
TEST_F(AssignTest, WhatARescueHasAssignedIsCountedOnce)
{
    const CEOID released = AddCategory(L"Home", 1);
    const CEOID kept = AddCategory(L"Work", 1);
    const CEOID added = AddCategory(L"Garden");
    const CEOID gone = AddCategory(L"Gone");
    DeleteCategory(gone);
    CEOID id = AddEntry({released, kept});
    RescueState state;
    state.categories = std::vector<CEOID>{kept, added, gone};
    state.contacts = {4711};
    EditorRecord record(Own().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    RescueState before;
    record.DescribeTo(&before);
    state.image = before.image;
    record.GoOnWith(state);
    RescueState after;
    record.DescribeTo(&after);
    EXPECT_EQ(after.categories, (std::vector<CEOID>{kept, added}));
    EXPECT_TRUE(after.contacts.empty());
    EntryToWrite entry;
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Uses(released), 0);
    EXPECT_EQ(Uses(kept), 1);
    EXPECT_EQ(Uses(added), 1);
    RescueState saved;
    record.DescribeTo(&saved);
    EXPECT_FALSE(saved.categories) << "those that the record has";
}

// Of two contacts one is released and a third one assigned.
TEST_F(AssignTest, WhatARescueHasAssignedOfContactsIsSaved)
{
    const CEOID released = AddContact(L"Doe");
    const CEOID kept = AddContact(L"Roe");
    const CEOID added = AddContact(L"Poe");
    CEOID id = AddEntry({}, {released, kept});
    EditorRecord record(Own().Journal(), &id);
    record.OpenStores(nullptr);
    JournalEntry loaded;
    ASSERT_EQ(record.Load(&loaded), EditorRecord::Loaded::Done);
    RescueState state;
    record.DescribeTo(&state);
    EXPECT_EQ(state.contacts, (std::vector<CEOID>{released, kept}));
    state.contacts = {kept, added};
    record.GoOnWith(state);
    EntryToWrite entry;
    EXPECT_EQ(record.Save(&entry), EditorRecord::Saved::Updated);
    EXPECT_EQ(Read(id).contacts, Ids({kept, added}));
}

} // namespace
