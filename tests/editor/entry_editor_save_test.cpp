// What the editor loads, what it counts as a change and what it writes.
#include "entry_editor_save_fixture.h"
#include "mervane/db_categories.h"

namespace {

TEST_F(EntryEditorSaveTest, ShowsARecordAsItIsAndUnmodified)
{
    CEOID id = Write(Full());
    Run(&id, [&](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Lunch");
        EXPECT_GE(editor.Ask(IDC_SUBJECT, CB_GETCURSEL), 2);
        EXPECT_EQ(editor.Text(IDC_BODY), L"First\r\nSecond");
        EXPECT_EQ(editor.Text(IDC_TYPE), L"Meeting");
        EXPECT_EQ(editor.Text(IDC_DURATION), L"1 hour 30 min");
        EXPECT_EQ(editor.BarText(CMD_PRIORITY), L"High");
        EXPECT_EQ(editor.BarImage(CMD_PRIORITY), 9);
        EXPECT_EQ(editor.BarText(CMD_SENSITIVITY), L"Confidential");
        EXPECT_EQ(editor.BarImage(CMD_SENSITIVITY), 13);
        EXPECT_EQ(editor.Picked(IDC_START_DATE).wDay, 5);
        EXPECT_EQ(editor.Picked(IDC_START_TIME).wHour, 14);
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorSaveTest, TheTitleIsTheRecordsWeekday)
{
    EntryToWrite entry = Full();
    entry.date = At({2024, 3, 0, 3, 9, 0, 0, 0});
    CEOID id = Write(entry);
    Run(&id, [&](EditorWindow& editor) { EXPECT_EQ(WindowText(editor.Window()), L"Sunday"); });
}

TEST_F(EntryEditorSaveTest, ARecordThatIsGoneOpensAsANewEntry)
{
    CEOID id = Write(Full());
    ASSERT_TRUE(Own().Journal().DeleteRecord(id));
    const CEOID gone = id;
    Run(&id, [&](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes");
        editor.Enter(IDC_SUBJECT, L"New");
        editor.Ok();
    });
    EXPECT_NE(id, gone);
    EXPECT_EQ(Read(id).subject, L"New");
}

TEST_F(EntryEditorSaveTest, ANewEntryIsStoredWithAllItsProperties)
{
    CEOID id = 0;
    const int result = Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Lunch");
        editor.Enter(IDC_BODY, L"With Ann\r\nat noon");
        editor.Enter(IDC_DURATION, L"90");
        editor.Ok();
    });
    EXPECT_EQ(result, 1);
    ASSERT_NE(id, 0u);
    EXPECT_EQ(Count(), 1u);
    const JournalEntry entry = Read(id);
    EXPECT_EQ(entry.kind, 3);
    EXPECT_EQ(entry.date, At(kTuesday));
    EXPECT_EQ(entry.duration, Minutes(90));
    EXPECT_EQ(entry.endTime, At(kTuesday) + Minutes(90));
    EXPECT_EQ(entry.priority, 1);
    EXPECT_EQ(entry.sensitivity, 0);
    EXPECT_EQ(entry.type, L"Phone call");
    EXPECT_EQ(entry.subject, L"Lunch");
    EXPECT_EQ(entry.body, L"With Ann\r\nat noon");
    EXPECT_FALSE(entry.categories);
    EXPECT_FALSE(entry.contacts);
}

TEST_F(EntryEditorSaveTest, PlaceholdersAreNeverStored)
{
    CEOID id = 0;
    Run(&id, [](EditorWindow& editor) {
        editor.Choose(CMD_PRIORITY, CMD_PRIORITY_HIGH);
        editor.Ok();
    });
    ASSERT_NE(id, 0u);
    EXPECT_FALSE(Read(id).subject);
    EXPECT_FALSE(Read(id).body);
    EXPECT_EQ(Read(id).priority, 2);
}

TEST_F(EntryEditorSaveTest, APlaceholderDeletesWhatTheRecordHad)
{
    CEOID id = Write(Full());
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"<Entry Subject>");
        editor.Enter(IDC_BODY, L"<Entry Body>");
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).subject);
    EXPECT_FALSE(Read(id).body);
}

TEST_F(EntryEditorSaveTest, ATextThatOnlyBeginsLikeAPlaceholderIsKept)
{
    CEOID id = 0;
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"<entry subject>");
        editor.Enter(IDC_BODY, L"<Entry Body> and more");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).subject, L"<entry subject>");
    EXPECT_EQ(Read(id).body, L"<Entry Body> and more");
}

TEST_F(EntryEditorSaveTest, AnEmptiedSubjectAndBodyAreDeleted)
{
    CEOID id = Write(Full());
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"");
        editor.Enter(IDC_BODY, L"");
        editor.Focus(IDC_TYPE);
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(editor.Text(IDC_BODY), L"<Entry Body>");
        editor.Ok();
    });
    EXPECT_FALSE(Read(id).subject);
    EXPECT_FALSE(Read(id).body);
}

TEST_F(EntryEditorSaveTest, AFirstSaveLeavesTheEntryModifiedAndOkUpdatesIt)
{
    CEOID id = 0;
    const int result = Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Lunch");
        editor.Command(CMD_SAVE);
        EXPECT_NE(id, 0u);
        EXPECT_EQ(Count(), 1u);
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Enter(IDC_SUBJECT, L"Dinner");
        editor.Ok();
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(id).subject, L"Dinner");
}

TEST_F(EntryEditorSaveTest, AnUpdateEndsTheChange)
{
    CEOID id = Write(Full());
    const MessageBoxAnswerer boxes;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Dinner");
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Command(CMD_SAVE);
        EXPECT_FALSE(editor.SaveEnabled());
        editor.Cancel();
    });
    EXPECT_TRUE(boxes.Boxes().empty());
    EXPECT_EQ(Read(id).subject, L"Dinner");
    EXPECT_EQ(Count(), 1u);
}

TEST_F(EntryEditorSaveTest, SavingUnchecksTheTimer)
{
    CEOID id = Write(Full());
    Run(&id, [](EditorWindow& editor) {
        editor.Ask(IDC_EDITOR_BAR, TB_CHECKBUTTON, CMD_TIMER, TRUE);
        editor.Command(CMD_SAVE);
        EXPECT_FALSE(editor.BarState(CMD_TIMER) & TBSTATE_CHECKED);
    });
}

TEST_F(EntryEditorSaveTest, EveryEntryIsSavedAsTheSameKind)
{
    CEOID id = WriteOnly({ShortValue(kPropKind, 7)});
    ASSERT_EQ(Read(id).kind, 7);
    SaveUnchanged(id);
    EXPECT_EQ(Read(id).kind, 3);
}

TEST_F(EntryEditorSaveTest, ARecordWithoutADateStartsNow)
{
    CEOID id = WriteOnly({TextValue(kPropSubject, L"Lunch")});
    Run(&id, [&](EditorWindow& editor) {
        EXPECT_EQ(WindowText(editor.Window()), L"Tuesday");
        EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes");
        EXPECT_EQ(editor.BarText(CMD_PRIORITY), L"Normal");
        EXPECT_EQ(editor.Text(IDC_BODY), L"<Entry Body>");
        EXPECT_FALSE(editor.SaveEnabled());
        editor.Command(CMD_SAVE);
    });
    EXPECT_EQ(Read(id).date, At(kTuesday));
    EXPECT_EQ(Read(id).subject, L"Lunch");
}

TEST_F(EntryEditorSaveTest, EveryKindOfChangeIsNoticed)
{
    const std::pair<const char*, std::function<void(EditorWindow&)>> changes[] = {
        {"subject", [](EditorWindow& editor) { editor.Enter(IDC_SUBJECT, L"x"); }},
        {"subject chosen", [](EditorWindow& editor) { editor.Command(IDC_SUBJECT, CBN_SELCHANGE); }},
        {"type", [](EditorWindow& editor) { editor.Command(IDC_TYPE, CBN_SELCHANGE); }},
        {"duration", [](EditorWindow& editor) { editor.Enter(IDC_DURATION, L"7"); }},
        {"body", [](EditorWindow& editor) { editor.Enter(IDC_BODY, L"x"); }},
        {"date",
         [](EditorWindow& editor) {
             editor.Pick(IDC_START_DATE, {2024, 3, 3, 6, 14, 5, 0, 0});
         }},
        {"time",
         [](EditorWindow& editor) {
             editor.Pick(IDC_START_TIME, {2024, 3, 2, 5, 15, 5, 0, 0});
         }},
        {"priority", [](EditorWindow& editor) { editor.Choose(CMD_PRIORITY, CMD_PRIORITY_LOW); }},
        {"sensitivity",
         [](EditorWindow& editor) { editor.Choose(CMD_SENSITIVITY, CMD_SENSITIVITY_PRIVATE); }},
        {"time stamp", [](EditorWindow& editor) { editor.Command(CMD_TIME_STAMP); }},
    };
    for (const auto& [name, change] : changes)
        RunNew([&](EditorWindow& editor) {
            EXPECT_FALSE(editor.SaveEnabled()) << name;
            change(editor);
            EXPECT_TRUE(editor.SaveEnabled()) << name;
        });
}

TEST_F(EntryEditorSaveTest, LookingAroundIsNoChange)
{
    CEOID id = Write(Full());
    Run(&id, [](EditorWindow& editor) {
        for (const int field : {IDC_START_TIME, IDC_SUBJECT, IDC_TYPE, IDC_DURATION, IDC_EDITOR_BAR, IDC_BODY,
                                IDOK, IDCANCEL, IDC_START_DATE, IDC_DURATION, IDC_SUBJECT})
            editor.Focus(field);
        editor.Choose(CMD_ZOOM, CMD_ZOOM_200);
        editor.TellOfChange(L"intl");
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorSaveTest, ARecordDeletedMeanwhileIsWrittenAnew)
{
    CEOID id = Write(Full());
    const CEOID before = id;
    const int result = Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"Still here");
        Own().Journal().DeleteRecord(before);
        editor.Ok();
    });
    EXPECT_EQ(result, 1);
    EXPECT_NE(id, before);
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(Read(id).body, L"Still here");
    EXPECT_EQ(Read(id).subject, L"Lunch");
}

TEST_F(EntryEditorSaveTest, UnknownPriorityAndSensitivityAreSavedAsNormal)
{
    CEOID id = WriteOnly({ShortValue(kPropPriority, 5), ShortValue(kPropSensitivity, -1)});
    Run(&id, [&](EditorWindow& editor) {
        EXPECT_EQ(editor.BarText(CMD_PRIORITY), L"Normal");
        EXPECT_EQ(editor.BarText(CMD_SENSITIVITY), L"Normal");
        editor.Enter(IDC_BODY, L"x");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).priority, 1);
    EXPECT_EQ(Read(id).sensitivity, 0);
}

TEST_F(EntryEditorSaveTest, ValuesComeBackAsTheyWere)
{
    CEOID id = Write(Full());
    SaveUnchanged(id);
    const JournalEntry entry = Read(id);
    EXPECT_EQ(entry.date, At(kTuesday));
    EXPECT_EQ(entry.endTime, At(kTuesday) + Minutes(90));
    EXPECT_EQ(entry.duration, Minutes(90));
    EXPECT_EQ(entry.priority, 2);
    EXPECT_EQ(entry.sensitivity, 3);
    EXPECT_EQ(entry.type, L"Meeting");
    EXPECT_EQ(entry.subject, L"Lunch");
    EXPECT_EQ(entry.body, L"First\r\nSecond");
}

TEST_F(EntryEditorSaveTest, OddTextsComeBackAsTheyWere)
{
    EntryToWrite entry = Full();
    entry.body = L"lone \xD800 high, low \xDC00\r\n\r\ntab\there \xD83D\xDE00 \x05D0 end ";
    entry.subject = L" \xDFFF subject with \t tab\r\nand a second line ";
    CEOID id = Write(entry);
    SaveUnchanged(id);
    EXPECT_EQ(Read(id).body, entry.body);
    EXPECT_EQ(Read(id).subject, entry.subject);
}

// As another tool may have stored them.
TEST_F(EntryEditorSaveTest, LoneLineEndsAreShownAndSavedAsWholeOnes)
{
    EntryToWrite entry = Full();
    entry.body = L"one\ntwo\rthree\r\n";
    CEOID id = Write(entry);
    Run(&id, [](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_BODY), L"one\r\ntwo\r\nthree\r\n");
        EXPECT_EQ(editor.Ask(IDC_BODY, EM_GETLINECOUNT), 4);
        EXPECT_FALSE(editor.SaveEnabled()) << "looking is no change";
    });
    EXPECT_EQ(Read(id).body, entry.body);
    SaveUnchanged(id);
    EXPECT_EQ(Read(id).body, L"one\r\ntwo\r\nthree\r\n");
}

TEST_F(EntryEditorSaveTest, ATextThatIsPutInWithLoneLineEndsIsSavedWithWholeOnes)
{
    CEOID id = 0;
    Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"one\ntwo\rthree");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).body, L"one\r\ntwo\r\nthree");
}

TEST_F(EntryEditorSaveTest, LoneLineEndsArePastedAsWholeOnes)
{
    const std::pair<const wchar_t*, const wchar_t*> texts[] = {
        {L"one\ntwo\rthree\n", L"one\r\ntwo\r\nthree\r\n"},
        {L"one\r\ntwo", L"one\r\ntwo"},
        {L"one", L"one"},
    };
    for (const auto& [copied, expected] : texts) {
        CEOID id = 0;
        Run(&id, [&](EditorWindow& editor) {
            ASSERT_TRUE(Copy(editor.Window(), copied));
            editor.Focus(IDC_BODY);
            editor.Ask(IDC_BODY, EM_SETSEL, 0, -1);
            editor.Ask(IDC_BODY, WM_PASTE);
            EXPECT_EQ(editor.Text(IDC_BODY), expected);
            EXPECT_TRUE(editor.SaveEnabled());
            editor.Ask(IDC_BODY, EM_UNDO);
            EXPECT_EQ(editor.Text(IDC_BODY), L"<Entry Body>") << "as every paste";
            editor.Ask(IDC_BODY, EM_SETSEL, 0, -1);
            editor.Ask(IDC_BODY, WM_PASTE);
            editor.Ok();
        });
        EXPECT_EQ(Read(id).body, expected);
    }
}

size_t g_put = 0; // characters into the body, the last time

LRESULT CALLBACK WatchPut(HWND body, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == EM_REPLACESEL)
        g_put = wcslen(reinterpret_cast<const wchar_t*>(lParam));
    return DefSubclassProc(body, message, wParam, lParam);
}

// Of what a program puts into it some systems' controls keep no limit.
TEST_F(EntryEditorSaveTest, WhatIsPastedDoesNotGoBeyondTheLimit)
{
    const MessageBoxAnswerer boxes;
    CEOID id = 0;
    Run(&id, [&](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"1234");
        editor.Ask(IDC_BODY, EM_LIMITTEXT, 8);
        ASSERT_TRUE(Copy(editor.Window(), L"abc\nd\ne"));
        ASSERT_TRUE(SetWindowSubclass(editor.Item(IDC_BODY), WatchPut, 77, 0));
        editor.Ask(IDC_BODY, EM_SETSEL, 1, 2);
        editor.Ask(IDC_BODY, WM_PASTE);
        EXPECT_EQ(g_put, 5u);
        EXPECT_EQ(editor.Text(IDC_BODY), L"1abc\r\n34");
        editor.Ask(IDC_BODY, EM_SETSEL, 0, 2);
        editor.Ask(IDC_BODY, EM_LIMITTEXT, 10);
        editor.Ask(IDC_BODY, WM_PASTE);
        EXPECT_EQ(g_put, 3u) << "no half of a line end";
        EXPECT_EQ(editor.Text(IDC_BODY), L"abcbc\r\n34");
        RemoveWindowSubclass(editor.Item(IDC_BODY), WatchPut, 77);
        editor.Ok();
    });
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Maximum Reached");
    EXPECT_EQ(Read(id).body, L"abcbc\r\n34");
}

TEST_F(EntryEditorSaveTest, AVeryLongBodyComesBackAsItWas)
{
    EntryToWrite entry = Full();
    while (entry.body.size() < 1'000'000)
        entry.body += L"The quick brown fox jumps over the lazy dog and runs away from the noise.\r\n";
    CEOID id = Write(entry);
    SaveUnchanged(id);
    EXPECT_EQ(Read(id).body, entry.body);
}

TEST_F(EntryEditorSaveTest, TheTwoEndsDecideOverTheDuration)
{
    CEOID id =
        WriteOnly({TimeValue(kPropDate, At(kTuesday)), TimeValue(kPropEndTime, At(kTuesday) + Minutes(20)),
                   TimeValue(kPropDuration, Minutes(500))});
    Run(&id, [&](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_DURATION), L"20 minutes");
        editor.Command(CMD_SAVE);
    });
    EXPECT_EQ(Read(id).duration, Minutes(20));
}

TEST_F(EntryEditorSaveTest, WithoutAnEndThereIsNoDuration)
{
    CEOID id = WriteOnly({TimeValue(kPropDate, At(kTuesday)), TimeValue(kPropDuration, Minutes(20))});
    SaveUnchanged(id);
    EXPECT_EQ(Read(id).duration, TimeCount());
    EXPECT_EQ(Read(id).endTime, At(kTuesday));
}

TEST_F(EntryEditorSaveTest, DurationsOfAnyLengthComeBackAsTheyWere)
{
    const uint64_t lengths[] = {1,
                                599'999'999,
                                40ull * 24 * 60 * 600'000'000,
                                0x7FFFFFFFFFFFFFFF,
                                0x8000000000000000,
                                0xFFFFFFFFFFFFFFFF};
    for (const uint64_t length : lengths) {
        EntryToWrite entry = Full();
        entry.duration = TimeCount(length);
        entry.endTime = entry.date + entry.duration;
        CEOID id = Write(entry);
        SaveUnchanged(id);
        EXPECT_EQ(Read(id).duration, entry.duration) << length;
        EXPECT_EQ(Read(id).endTime, entry.endTime) << length;
    }
}

TEST_F(EntryEditorSaveTest, DatesThatNoPickerShowsComeBackAsTheyWere)
{
    for (const uint64_t date :
         {0ull, 1ull, 0x8000000000000000ull, 0xFFFFFFFFFFFFFFFFull, 2650467743999999999ull}) {
        EntryToWrite entry = Full();
        entry.date = entry.endTime = TimeCount(date);
        entry.duration = TimeCount();
        CEOID id = Write(entry);
        SaveUnchanged(id);
        EXPECT_EQ(Read(id).date, entry.date) << date;
    }
}

TEST_F(EntryEditorSaveTest, CategoriesAreNamedInTheLineAndKept)
{
    DbCategories categories;
    ASSERT_TRUE(categories.Open());
    ZStack stack;
    for (const wchar_t* name : {L"Work", L"Home & garden"}) {
        const CEPROPVAL value = TextValue(kCategoriesKey, name);
        stack.Push({categories.WriteRecord(0, 1, &value), 0x101});
    }
    CEOID id = Write(Full());
    CEPROPVAL blob{};
    blob.propid = kPropCategories;
    ASSERT_TRUE(categories.SetBlobFromStack(stack, &blob.val.blob));
    const LocalBlock<BYTE> block(blob.val.blob.lpb);
    ASSERT_EQ(Own().Journal().WriteRecord(id, 1, &blob), id);
    Run(&id, [](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_CATEGORIES_LINE), L"Home & garden, Work");
        editor.Enter(IDC_BODY, L"Changed");
        editor.Ok();
    });
    ASSERT_TRUE(Read(id).categories);
    EXPECT_EQ(Read(id).categories->size(), 12u);
    EXPECT_EQ(Read(id).body, L"Changed");
}

} // namespace
