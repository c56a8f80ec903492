// The values in the editor's boxes, pickers and buttons.
#include "editor_fixture.h"

#include "editor/editor_settings.h"
#include "editor/zoom.h"
#include "res/resource.h"
#include "ui/screen/scale.h"

namespace {

class EntryEditorValuesTest : public EditorTest {
  protected:
    CEOID WriteType(const wchar_t* type)
    {
        EntryToWrite entry;
        entry.date = entry.endTime = At(kTuesday);
        entry.type = type;
        return Write(entry);
    }
    // What is stored when the action has worked a new entry and OK was pressed.
    JournalEntry Stored(const std::function<void(EditorWindow&)>& action)
    {
        CEOID id = 0;
        Run(&id, [&](EditorWindow& editor) {
            action(editor);
            editor.Ok();
        });
        return id ? Read(id) : JournalEntry{};
    }
    static LOGFONTW BodyFont(const EditorWindow& editor)
    {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(editor.Ask(IDC_BODY, WM_GETFONT)), sizeof font, &font);
        return font;
    }
};

TEST_F(EntryEditorValuesTest, TheBoxesHoldTheirLists)
{
    RunNew([](EditorWindow& editor) {
        EXPECT_EQ(editor.Ask(IDC_TYPE, CB_GETCOUNT), 19);
        EXPECT_EQ(editor.ListItem(IDC_TYPE, 0), L"Conversation");
        EXPECT_EQ(editor.ListItem(IDC_TYPE, 18), L"Task response");
        EXPECT_EQ(editor.Ask(IDC_DURATION, CB_GETCOUNT), 17);
        EXPECT_EQ(editor.ListItem(IDC_DURATION, 0), L"0 minutes");
        EXPECT_EQ(editor.ListItem(IDC_DURATION, 2), L"10 minutes");
        EXPECT_EQ(editor.ListItem(IDC_DURATION, 16), L"2 days");
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, CB_GETCOUNT), 2);
    });
}

TEST_F(EntryEditorValuesTest, TheTypeSavedLastIsTheNextOnesType)
{
    EXPECT_EQ(Stored([](EditorWindow& editor) {
                  editor.Ask(IDC_TYPE, CB_SETCURSEL, 5);
                  editor.Command(IDC_TYPE, CBN_SELCHANGE);
              }).type,
              L"Meeting");
    wchar_t text[kSettingTextSize];
    Own().GetString(L"Settings", L"selType", L"", text);
    EXPECT_STREQ(text, L"Meeting");
    RunNew([](EditorWindow& editor) { EXPECT_EQ(editor.Text(IDC_TYPE), L"Meeting"); });
}

TEST_F(EntryEditorValuesTest, TheRememberedTypeMatchesAsAWholeInAnyCase)
{
    const std::pair<const wchar_t*, const wchar_t*> remembered[] = {
        {L"tASK", L"Task"}, {L"Meeting c", L"Phone call"}, {L"Golf", L"Phone call"}, {L"", L"Phone call"}};
    for (const auto& [stored, shown] : remembered) {
        Own().SetString(kSettings, L"selType", stored);
        RunNew([&](EditorWindow& editor) { EXPECT_EQ(editor.Text(IDC_TYPE), shown); });
    }
}

TEST_F(EntryEditorValuesTest, ARecordsTypeIsFoundByItsBeginning)
{
    const std::pair<const wchar_t*, const wchar_t*> types[] = {{L"Meeting", L"Meeting"},
                                                               {L"meeting R", L"Meeting request"},
                                                               {L"C", L"Conversation"},
                                                               {L"Micro", L"Microsoft Access"}};
    for (const auto& [stored, shown] : types) {
        CEOID id = WriteType(stored);
        Run(&id, [&](EditorWindow& editor) { EXPECT_EQ(editor.Text(IDC_TYPE), shown); });
    }
}

TEST_F(EntryEditorValuesTest, AnUnknownTypeLeavesTheRememberedOneAndIsReplacedByIt)
{
    Own().SetString(kSettings, L"selType", L"Fax");
    CEOID id = WriteType(L"Golf");
    Run(&id, [](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_TYPE), L"Fax");
        EXPECT_FALSE(editor.SaveEnabled());
        editor.Enter(IDC_BODY, L"x");
        editor.Ok();
    });
    EXPECT_EQ(Read(id).type, L"Fax");
}

TEST_F(EntryEditorValuesTest, AnEmptyTypeBoxTakesTheFirstType)
{
    RunNew([](EditorWindow& editor) {
        editor.Ask(IDC_TYPE, CB_SETCURSEL, static_cast<WPARAM>(-1));
        editor.Command(IDC_TYPE, CBN_KILLFOCUS);
        EXPECT_EQ(editor.Text(IDC_TYPE), L"Conversation");
    });
}

TEST_F(EntryEditorValuesTest, AnEmptySubjectBoxTakesThePlaceholder)
{
    RunNew([](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"");
        editor.Focus(IDC_BODY);
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, CB_GETCURSEL), 1);
    });
}

TEST_F(EntryEditorValuesTest, ATypedDurationIsReadOnLeavingTheBox)
{
    const std::pair<const wchar_t*, const wchar_t*> typed[] = {{L"90", L"1 hour 30 min"},
                                                               {L"1 hour", L"1 hour"},
                                                               {L"1.5h", L"1 hour 30 min"},
                                                               {L"2 weeks", L"2 days"},
                                                               {L"nothing", L"0 minutes"}};
    RunNew([&](EditorWindow& editor) {
        for (const auto& [text, shown] : typed) {
            editor.Enter(IDC_DURATION, text);
            EXPECT_EQ(editor.Text(IDC_DURATION), text);
            editor.Focus(IDC_BODY);
            EXPECT_EQ(editor.Text(IDC_DURATION), shown);
        }
    });
}

TEST_F(EntryEditorValuesTest, TheEndFollowsTheDuration)
{
    const JournalEntry entry = Stored([](EditorWindow& editor) {
        editor.Enter(IDC_DURATION, L"1 hour");
        editor.Focus(IDC_BODY);
    });
    EXPECT_EQ(entry.duration, Minutes(60));
    EXPECT_EQ(entry.endTime, At(kTuesday) + Minutes(60));
}

TEST_F(EntryEditorValuesTest, AChosenDurationIsReadWhenTheListCloses)
{
    const std::tuple<int, const wchar_t*, int> chosen[] = {
        {6, L"2 hours", 120}, {14, L"12 hours", 720}, {5, L"1 hour", 60}, {4, L"30 minutes", 30}};
    for (const auto& [item, shown, minutes] : chosen) {
        const JournalEntry entry = Stored([&](EditorWindow& editor) {
            editor.ChooseInBox(IDC_DURATION, item);
            EXPECT_EQ(editor.Text(IDC_DURATION), shown);
        });
        EXPECT_EQ(entry.duration, Minutes(minutes)) << shown;
    }
}

// Some systems bring the box's text into line with the choice only after the list has closed.
TEST_F(EntryEditorValuesTest, AChoiceCountsBeforeTheBoxesText)
{
    const JournalEntry entry = Stored([](EditorWindow& editor) {
        editor.Focus(IDC_DURATION);
        SetWindowTextW(editor.Field(IDC_DURATION), L"5 minutes");
        SendMessageW(FindWindowExW(editor.Item(IDC_DURATION), nullptr, L"ComboLBox", nullptr), LB_SETCURSEL,
                     6, 0);
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        ASSERT_TRUE(GetComboBoxInfo(editor.Item(IDC_DURATION), &info));
        SendMessageW(info.hwndList, LB_SETCURSEL, 6, 0);
        ASSERT_EQ(editor.Ask(IDC_DURATION, CB_GETCURSEL), 6);
        SetWindowTextW(editor.Field(IDC_DURATION), L"5 minutes");
        editor.Command(IDC_DURATION, CBN_CLOSEUP);
        SetWindowTextW(editor.Field(IDC_DURATION), L"2 hour");
        PumpMessages();
        EXPECT_EQ(editor.Text(IDC_DURATION), L"2 hours");
        editor.Command(IDC_DURATION, CBN_SELCHANGE);
    });
    EXPECT_EQ(entry.duration, Minutes(120));
}

TEST_F(EntryEditorValuesTest, AnOldChoiceDoesNotComeBackWhenTheListCloses)
{
    RunNew([](EditorWindow& editor) {
        editor.ChooseInBox(IDC_DURATION, 6);
        editor.Enter(IDC_DURATION, L"7");
        editor.Focus(IDC_BODY);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"7 minutes");
        editor.Command(IDC_DURATION, CBN_CLOSEUP);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"7 minutes");
    });
}

TEST_F(EntryEditorValuesTest, AnEmptiedDurationBoxShowsFiveMinutesAndKeepsTheDuration)
{
    const auto empty = [](EditorWindow& editor) {
        editor.Enter(IDC_DURATION, L"1 hour");
        editor.Focus(IDC_BODY);
        editor.Enter(IDC_DURATION, L"");
        editor.Focus(IDC_BODY);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"5 minutes");
    };
    EXPECT_EQ(Stored(empty).duration, Minutes(60));
    EXPECT_EQ(Stored([&](EditorWindow& editor) {
                  empty(editor);
                  editor.Focus(IDC_DURATION);
                  editor.Focus(IDC_BODY);
              }).duration,
              Minutes(5));
}

TEST_F(EntryEditorValuesTest, OtherNotificationsOfTheDurationBoxReadNothing)
{
    RunNew([](EditorWindow& editor) {
        editor.Enter(IDC_DURATION, L"90");
        for (const int code : {CBN_SETFOCUS, CBN_EDITCHANGE, CBN_EDITUPDATE, CBN_DROPDOWN, CBN_SELENDOK})
            editor.Command(IDC_DURATION, static_cast<WORD>(code));
        EXPECT_EQ(editor.Text(IDC_DURATION), L"90");
    });
}

TEST_F(EntryEditorValuesTest, ADurationThatIsBeingTypedIsSaved)
{
    EXPECT_EQ(Stored([](EditorWindow& editor) { editor.Enter(IDC_DURATION, L"45"); }).duration, Minutes(45));
}

// Its words are less exact than it is.
TEST_F(EntryEditorValuesTest, ADurationThatNobodyTouchedIsNotReadAgain)
{
    for (const bool leaves : {false, true}) {
        EntryToWrite entry;
        entry.date = At(kTuesday);
        entry.duration = TimeCount(59'999'999); // some seconds
        entry.endTime = entry.date + entry.duration;
        CEOID id = Write(entry);
        Run(&id, [&](EditorWindow& editor) {
            EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes");
            editor.Focus(IDC_DURATION);
            if (leaves)
                editor.Focus(IDC_SUBJECT);
            editor.Command(CMD_SAVE);
        });
        EXPECT_EQ(Read(id).duration, entry.duration) << leaves;
        EXPECT_EQ(Read(id).endTime, entry.endTime) << leaves;
        Run(&id, [&](EditorWindow& editor) {
            editor.Enter(IDC_DURATION, L"0 minutes");
            editor.Ok();
        });
        EXPECT_EQ(Read(id).duration, TimeCount()) << "typed, it is what it says";
    }
}

TEST_F(EntryEditorValuesTest, ADurationThatIsShownWronglyStaysWhereNobodyTouchesIt)
{
    EntryToWrite entry;
    entry.date = At(kTuesday);
    entry.duration = Minutes(32 * 24 * 60);
    entry.endTime = entry.date + entry.duration;
    CEOID id = Write(entry);
    Run(&id, [&](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_DURATION), L"1 day");
        editor.Focus(IDC_DURATION);
        editor.Focus(IDC_SUBJECT);
        editor.Command(CMD_SAVE);
    });
    EXPECT_EQ(Read(id).duration, entry.duration);
}

TEST_F(EntryEditorValuesTest, ANewDateKeepsTheTimeAndMovesTheEnd)
{
    const JournalEntry entry = Stored([](EditorWindow& editor) {
        editor.Enter(IDC_DURATION, L"30");
        SYSTEMTIME date = editor.Picked(IDC_START_DATE);
        date.wDay = 9;
        editor.Pick(IDC_START_DATE, date);
        EXPECT_EQ(WindowText(editor.Window()), L"Saturday");
        EXPECT_EQ(editor.Picked(IDC_START_TIME).wDay, 9);
        EXPECT_EQ(editor.Picked(IDC_START_TIME).wHour, 14);
        EXPECT_EQ(editor.Picked(IDC_START_TIME).wMinute, 5);
    });
    EXPECT_EQ(entry.date, At({2024, 3, 6, 9, 14, 5, 30, 250}));
    EXPECT_EQ(entry.endTime, At({2024, 3, 6, 9, 14, 35, 30, 250}));
    EXPECT_EQ(entry.duration, Minutes(30));
}

// As the calendar of a date picker gives it.
TEST_F(EntryEditorValuesTest, ADateWithoutATimeKeepsTheTime)
{
    const JournalEntry entry = Stored([](EditorWindow& editor) {
        editor.Pick(IDC_START_DATE, {2024, 3, 0, 9, 0, 0, 0, 0});
        EXPECT_EQ(editor.Picked(IDC_START_TIME).wDay, 9);
        EXPECT_EQ(editor.Picked(IDC_START_TIME).wHour, 14);
    });
    EXPECT_EQ(entry.date, At({2024, 3, 6, 9, 14, 5, 30, 250}));
}

TEST_F(EntryEditorValuesTest, ANewTimeKeepsTheDate)
{
    const JournalEntry entry = Stored([](EditorWindow& editor) {
        SYSTEMTIME time = editor.Picked(IDC_START_TIME);
        time.wHour = 8;
        time.wMinute = 15;
        editor.Pick(IDC_START_TIME, time);
        EXPECT_EQ(editor.Picked(IDC_START_DATE).wDay, 5);
        EXPECT_EQ(editor.Picked(IDC_START_DATE).wHour, 8);
        EXPECT_EQ(WindowText(editor.Window()), L"Tuesday");
    });
    EXPECT_EQ(entry.date, At({2024, 3, 2, 5, 8, 15, 30, 250}));
}

TEST_F(EntryEditorValuesTest, DateAndTimeFollowTheKeys)
{
    SYSTEMTIME typed{};
    const JournalEntry entry = Stored([&](EditorWindow& editor) {
        for (const int picker : {IDC_START_DATE, IDC_START_TIME}) {
            const TimeCount before = At(editor.Picked(picker));
            editor.Focus(picker);
            editor.Key(VK_RIGHT);
            editor.Key(VK_UP);
            EXPECT_NE(At(editor.Picked(picker)), before);
            EXPECT_EQ(At(editor.Picked(IDC_START_DATE)), At(editor.Picked(IDC_START_TIME)));
        }
        typed = editor.Picked(IDC_START_TIME);
    });
    EXPECT_EQ(entry.date, At(typed));
}

TEST_F(EntryEditorValuesTest, TheTimePickerShowsTheLocalesFormat)
{
    RunNew([](EditorWindow& editor) {
        wchar_t expected[80];
        GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &kTuesday, nullptr, expected, 80);
        EXPECT_EQ(editor.Text(IDC_START_TIME), expected);
    });
}

TEST_F(EntryEditorValuesTest, ChosenValuesShowOnTheirButtonsAndAreStored)
{
    const JournalEntry entry = Stored([](EditorWindow& editor) {
        editor.Choose(CMD_PRIORITY, CMD_PRIORITY_LOW);
        EXPECT_EQ(editor.BarText(CMD_PRIORITY), L"Low");
        EXPECT_EQ(editor.BarImage(CMD_PRIORITY), 7);
        EXPECT_EQ(editor.BarWidth(CMD_PRIORITY), Scale(85));
        editor.Choose(CMD_SENSITIVITY, CMD_SENSITIVITY_PRIVATE);
        EXPECT_EQ(editor.BarText(CMD_SENSITIVITY), L"Private");
        EXPECT_EQ(editor.BarImage(CMD_SENSITIVITY), 12);
        EXPECT_EQ(editor.BarWidth(CMD_SENSITIVITY), Scale(100));
    });
    EXPECT_EQ(entry.priority, 0);
    EXPECT_EQ(entry.sensitivity, 2);
}

TEST_F(EntryEditorValuesTest, ZoomSetsTheBodysFontAndIsKept)
{
    const std::tuple<int, const wchar_t*, int, int> steps[] = {{1041, L"50%", 400, -9},
                                                               {1042, L"100%", 400, -12},
                                                               {1043, L"150%", 700, -14},
                                                               {1044, L"200%", 700, -18}};
    for (const auto& [id, text, weight, height] : steps) {
        RunNew([&](EditorWindow& editor) {
            editor.Choose(CMD_ZOOM, id);
            EXPECT_EQ(editor.BarText(CMD_ZOOM), text);
            EXPECT_EQ(BodyFont(editor).lfWeight, weight);
            EXPECT_EQ(BodyFont(editor).lfHeight, Scale(height));
            EXPECT_FALSE(editor.SaveEnabled());
        });
        EXPECT_EQ(Own().GetNumber(L"Settings", L"iZoom", 0), static_cast<DWORD>(id));
        RunNew([&](EditorWindow& editor) {
            EXPECT_EQ(editor.BarText(CMD_ZOOM), text);
            EXPECT_EQ(BodyFont(editor).lfHeight, Scale(height));
        });
    }
}

TEST_F(EntryEditorValuesTest, AnImpossibleZoomIsAHundredPercent)
{
    for (const DWORD stored : {0u, 1040u, 7u, 0xFFFFFFFFu}) {
        Own().SetNumber(kSettings, L"iZoom", stored);
        RunNew([&](EditorWindow& editor) {
            EXPECT_EQ(editor.BarText(CMD_ZOOM), L"100%");
            EXPECT_EQ(BodyFont(editor).lfHeight, Scale(-12));
        });
        EXPECT_EQ(Own().GetNumber(kSettings, L"iZoom", 0), 1042u);
    }
}

TEST_F(EntryEditorValuesTest, ZoomByCommandShowsOnTheButton)
{
    RunNew([](EditorWindow& editor) {
        editor.Command(CMD_ZOOM_150);
        EXPECT_EQ(editor.BarText(CMD_ZOOM), L"150%");
    });
    EXPECT_EQ(Own().GetNumber(kSettings, L"iZoom", 0), 1043u);
}

TEST_F(EntryEditorValuesTest, OnlyTheBodyChangesItsSize)
{
    RunNew([](EditorWindow& editor) {
        const LRESULT before = editor.Ask(IDC_SUBJECT, WM_GETFONT);
        editor.Choose(CMD_ZOOM, CMD_ZOOM_200);
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, WM_GETFONT), before);
    });
}

TEST_F(EntryEditorValuesTest, AFullBodyTellsSo)
{
    const MessageBoxAnswerer boxes;
    RunNew([](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"full");
        editor.Ask(IDC_BODY, EM_LIMITTEXT, 4);
        editor.Type(L"x");
        EXPECT_EQ(editor.Text(IDC_BODY), L"full");
    });
    ASSERT_EQ(boxes.Boxes().size(), 1u);
    EXPECT_EQ(boxes.Boxes()[0].text, L"You have reached the limit of characters permitted for this field.");
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Maximum Reached");
    EXPECT_EQ(boxes.Boxes()[0].icon, LoadIconW(nullptr, IDI_EXCLAMATION));
}

TEST_F(EntryEditorValuesTest, TheBodyHasTheControlsOwnLimit)
{
    HWND plain = CreateWindowExW(0, L"EDIT", L"", ES_MULTILINE | WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                 nullptr, nullptr);
    const LRESULT limit = SendMessageW(plain, EM_GETLIMITTEXT, 0, 0);
    DestroyWindow(plain);
    RunNew([&](EditorWindow& editor) { EXPECT_EQ(editor.Ask(IDC_BODY, EM_GETLIMITTEXT), limit); });
}

TEST_F(EntryEditorValuesTest, AMissingZoomIsAHundredPercent)
{
    EXPECT_EQ(StoredZoom(Own()), 1042u);
}

TEST_F(EntryEditorValuesTest, TheFontOfAnotherZoomIsFreedAndTheLastOneWithTheWindow)
{
    HFONT last = nullptr;
    RunNew([&](EditorWindow& editor) {
        const auto font = [&] { return reinterpret_cast<HFONT>(editor.Ask(IDC_BODY, WM_GETFONT)); };
        for (const int zoom : {CMD_ZOOM_200, CMD_ZOOM_150}) {
            HFONT before = font();
            ASSERT_EQ(GetObjectType(before), DWORD{OBJ_FONT});
            editor.Command(zoom);
            last = font();
            EXPECT_NE(last, before) << zoom;
            EXPECT_EQ(GetObjectType(last), DWORD{OBJ_FONT}) << zoom;
            EXPECT_EQ(GetObjectType(before), 0u) << zoom;
        }
    });
    EXPECT_EQ(GetObjectType(last), 0u);
}

TEST_F(EntryEditorValuesTest, ATypeIsCutTo59Characters)
{
    const std::wstring long70(70, L'x'), cut(59, L'x');
    const JournalEntry entry = Stored([&](EditorWindow& editor) {
        const LRESULT item = editor.Ask(IDC_TYPE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(long70.c_str()));
        editor.Ask(IDC_TYPE, CB_SETCURSEL, static_cast<WPARAM>(item));
        editor.Command(IDC_TYPE, CBN_SELCHANGE);
        ASSERT_EQ(editor.Text(IDC_TYPE), long70);
    });
    EXPECT_EQ(entry.type, cut);
    wchar_t stored[kSettingTextSize];
    Own().GetString(kSettings, L"selType", L"", stored);
    EXPECT_EQ(stored, cut);
}

} // namespace
