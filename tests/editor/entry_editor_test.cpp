// The editor as it opens and as it closes.
#include <algorithm>
#include <map>

#include "editor_fixture.h"
#include "res/resource.h"
#include "support/import_watch.h"
#include "support/locale_setting.h"
#include "support/resolution.h"
#include "support/selection_log.h"
#include "support/work_area_setting.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"
#include "util/date_text.h"

namespace {

class EntryEditorTest : public EditorTest {};

bool IsShown(HWND control)
{
    return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

DWORD StyleOf(HWND control)
{
    return static_cast<DWORD>(GetWindowLongPtrW(control, GWL_STYLE));
}

std::wstring ClassOf(HWND control)
{
    wchar_t name[64] = L"";
    GetClassNameW(control, name, 64);
    return name;
}

int Width(const RECT& rect)
{
    return static_cast<int>(rect.right - rect.left);
}
int Height(const RECT& rect)
{
    return static_cast<int>(rect.bottom - rect.top);
}

void ExpectSameMinute(const SYSTEMTIME& a, const SYSTEMTIME& b)
{
    EXPECT_EQ(a.wYear, b.wYear);
    EXPECT_EQ(a.wMonth, b.wMonth);
    EXPECT_EQ(a.wDay, b.wDay);
    EXPECT_EQ(a.wHour, b.wHour);
    EXPECT_EQ(a.wMinute, b.wMinute);
}

TEST_F(EntryEditorTest, ANewEntryStartsNow)
{
    RunNew([&](EditorWindow& editor) {
        ExpectSameMinute(editor.Picked(IDC_START_DATE), kTuesday);
        ExpectSameMinute(editor.Picked(IDC_START_TIME), kTuesday);
        EXPECT_EQ(editor.Text(IDC_DURATION), L"0 minutes");
        EXPECT_EQ(editor.Ask(IDC_DURATION, CB_GETCURSEL), 0);
        EXPECT_EQ(WindowText(editor.Window()), WeekdayName(kTuesday));
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"<Entry Subject>");
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, CB_GETCURSEL), 1);
        EXPECT_EQ(editor.Text(IDC_TYPE), L"Phone call");
        EXPECT_EQ(editor.Text(IDC_BODY), L"<Entry Body>");
        EXPECT_EQ(editor.Text(IDC_CATEGORIES_LINE), L"<None>");
        EXPECT_FALSE(editor.SaveEnabled());
        EXPECT_EQ(GetFocus(), editor.Item(IDC_START_DATE));
    });
    EXPECT_EQ(Count(), 0u);
}

TEST_F(EntryEditorTest, TheWindowCarriesTheTemplatesControls)
{
    RunNew([&](EditorWindow& editor) {
        EXPECT_EQ(editor.Text(IDC_CATEGORIES_LABEL), L"Categories:");
        EXPECT_EQ(editor.Text(IDOK), L"OK");
        EXPECT_EQ(editor.Text(IDCANCEL), L"Cancel");
    });
}

TEST_F(EntryEditorTest, ControlsHaveTheirClassesAndStyles)
{
    const struct {
        int id;
        const wchar_t* className;
        DWORD has;
        DWORD hasNot;
    } expected[] = {
        {IDC_START_DATE, L"SysDateTimePick32", WS_TABSTOP, DTS_UPDOWN | DTS_LONGDATEFORMAT},
        {IDC_START_TIME, L"SysDateTimePick32", WS_TABSTOP | DTS_TIMEFORMAT, 0},
        {IDC_SUBJECT, L"ComboBox", CBS_DROPDOWN | CBS_SORT | CBS_AUTOHSCROLL | CBS_NOINTEGRALHEIGHT, 1},
        {IDC_TYPE, L"ComboBox", CBS_DROPDOWNLIST | CBS_AUTOHSCROLL | CBS_NOINTEGRALHEIGHT, CBS_SORT},
        {IDC_DURATION, L"ComboBox", CBS_DROPDOWN | CBS_SORT | CBS_AUTOHSCROLL, CBS_NOINTEGRALHEIGHT},
        {IDC_EDITOR_BAR, L"ToolbarWindow32", TBSTYLE_LIST | CCS_NORESIZE, 0},
        {IDC_BODY, L"Edit", ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP,
         ES_AUTOHSCROLL},
    };
    RunNew([&](EditorWindow& editor) {
        for (const auto& control : expected) {
            EXPECT_EQ(ClassOf(editor.Item(control.id)), control.className) << control.id;
            EXPECT_EQ(StyleOf(editor.Item(control.id)) & control.has, control.has) << control.id;
            EXPECT_EQ(StyleOf(editor.Item(control.id)) & control.hasNot, 0u) << control.id;
        }
        EXPECT_TRUE(GetWindowLongPtrW(editor.Item(IDC_BODY), GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
    });
}

TEST_F(EntryEditorTest, TheWindowFillsTheWorkArea)
{
    RunNew([&](EditorWindow& editor) {
        RECT rect{};
        GetWindowRect(editor.Window(), &rect);
        const RECT area = WorkArea();
        EXPECT_TRUE(EqualRect(&rect, &area));
    });
}

TEST_F(EntryEditorTest, ControlsStandAtTheGivenPlaces)
{
    ASSERT_EQ(SystemDpi(), 96) << "the given places are those at 96 dpi";
    RunNew([&](EditorWindow& editor) {
        const int R = WorkArea().right - WorkArea().left;
        const int B = WorkArea().bottom - WorkArea().top;
        const RECT duration = editor.Rect(IDC_DURATION);
        const int h = Height(duration);
        const auto expectBox = [&](int id, int x, int y, int cx) {
            EXPECT_EQ(editor.Rect(id).left, x) << id;
            EXPECT_EQ(editor.Rect(id).top, y) << id;
            EXPECT_EQ(Width(editor.Rect(id)), cx) << id;
        };
        expectBox(IDC_START_DATE, 0, 1, 86);
        expectBox(IDC_START_TIME, 89, 1, 86);
        expectBox(IDC_SUBJECT, 178, 1, R - 324);
        expectBox(IDC_TYPE, R - 143, 1, 137);
        expectBox(IDC_DURATION, 0, 1 + h + 5, 120);
        expectBox(IDC_EDITOR_BAR, 136, h + 5, R - 131);
        EXPECT_EQ(Height(editor.Rect(IDC_START_DATE)), 22);
        EXPECT_EQ(Height(editor.Rect(IDC_EDITOR_BAR)), h + 3);
        const int top = h + 5 + h + 3 + 4 + 1 + 5;
        expectBox(IDC_BODY, 0, top, R - 7);
        EXPECT_EQ(Height(editor.Rect(IDC_BODY)), B - top - h - 27);
        EXPECT_EQ(editor.Rect(IDC_CATEGORIES_LABEL).left, 0);
        EXPECT_EQ(editor.Rect(IDC_CATEGORIES_LABEL).top, editor.Rect(IDC_BODY).bottom + 6);
        EXPECT_EQ(editor.Rect(IDC_CATEGORIES_LINE).left, editor.Rect(IDC_CATEGORIES_LABEL).right + 5);
        EXPECT_EQ(editor.Ask(IDC_SUBJECT, CB_GETDROPPEDWIDTH), R - 324 + 25);
    });
}

TEST_F(EntryEditorTest, DroppedListsHaveTheirGivenHeights)
{
    RunNew([&](EditorWindow& editor) {
        for (const int box : {IDC_SUBJECT, IDC_TYPE, IDC_DURATION}) {
            editor.Ask(box, CB_SHOWDROPDOWN, TRUE);
            COMBOBOXINFO info{};
            info.cbSize = sizeof info;
            ASSERT_TRUE(GetComboBoxInfo(editor.Item(box), &info));
            const RECT list = editor.RectOf(info.hwndList);
            int height = Scale(box == IDC_SUBJECT ? 70 : 80);
            if (box == IDC_DURATION) { // whole items
                const int item = static_cast<int>(editor.Ask(box, CB_GETITEMHEIGHT));
                height = height / item * item;
            }
            EXPECT_NEAR(Height(list), height, 2) << box;
            editor.Ask(box, CB_SHOWDROPDOWN, FALSE);
        }
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorTest, NothingIsOutOfReachInTheRealWindow)
{
    RunNew([&](EditorWindow& editor) {
        RECT client{};
        GetClientRect(editor.Window(), &client);
        int low = 0, high = 0; // a window that is too low scrolls
        GetScrollRange(editor.Window(), SB_VERT, &low, &high);
        client.bottom = std::max<LONG>(client.bottom, high + 1);
        for (const int id : {IDC_START_DATE, IDC_START_TIME, IDC_SUBJECT, IDC_TYPE, IDC_DURATION, IDC_BODY,
                             IDOK, IDCANCEL, IDC_CATEGORIES_LABEL, IDC_CATEGORIES_LINE}) {
            const RECT rect = editor.Rect(id);
            EXPECT_GE(rect.left, 0) << id;
            EXPECT_LE(rect.right, client.right) << id;
            EXPECT_LE(rect.bottom, client.bottom) << id;
        }
        HWND bar = editor.Item(IDC_EDITOR_BAR);
        RECT last{};
        SendMessageW(bar, TB_GETRECT, CMD_ASSIGN_CONTACTS, reinterpret_cast<LPARAM>(&last));
        MapWindowPoints(bar, editor.Window(), reinterpret_cast<POINT*>(&last), 2);
        EXPECT_LE(last.right, client.right);
        EXPECT_LE(last.bottom, editor.Rect(IDC_EDITOR_BAR).bottom);
    });
}

// So that the letter of a label there leads to the control behind it.
TEST_F(EntryEditorTest, TheTemplatesControlsFollowThoseThatAreMadeInTheirOrder)
{
    RunNew([](EditorWindow& editor) {
        std::vector<int> ids;
        for (HWND child = editor.Item(IDC_BODY); child; child = GetWindow(child, GW_HWNDNEXT))
            ids.push_back(static_cast<short>(GetDlgCtrlID(child)));
        EXPECT_EQ(
            ids, (std::vector<int>{IDC_BODY, IDC_CATEGORIES_LINE, IDC_CATEGORIES_LABEL, -1, IDOK, IDCANCEL}));
    });
}

TEST_F(EntryEditorTest, TheTabKeyGoesThroughTheFieldsInTheirOrder)
{
    RunNew([&](EditorWindow& editor) {
        HWND control = editor.Item(IDC_START_DATE);
        for (const int id : {IDC_START_TIME, IDC_SUBJECT, IDC_TYPE, IDC_DURATION, IDC_EDITOR_BAR, IDC_BODY,
                             IDOK, IDCANCEL, IDC_START_DATE}) {
            control = GetNextDlgTabItem(editor.Window(), control, FALSE);
            EXPECT_EQ(GetDlgCtrlID(control), id);
        }
    });
}

TEST_F(EntryEditorTest, TheBarHasItsButtonsInOrder)
{
    const struct {
        int command;
        int image;
        BYTE style;
        int width;
        const wchar_t* text;
    } expected[] = {
        {1054, 3, BTNS_CHECK, 75, L"Off"},
        {0, 0, BTNS_SEP, 0, L""},
        {1030, 10, BTNS_DROPDOWN, 100, L"Normal"},
        {1020, 8, BTNS_DROPDOWN, 85, L"Normal"},
        {0, 0, BTNS_SEP, 0, L""},
        {1050, 4, BTNS_AUTOSIZE, 24, L""},
        {1024, 15, BTNS_AUTOSIZE, 24, L""},
        {0, 0, BTNS_SEP, 0, L""},
        {1053, 0, BTNS_AUTOSIZE, 24, L""},
        {1040, 6, BTNS_DROPDOWN, 75, L"100%"},
        {0, 0, BTNS_SEP, 0, L""},
        {1052, 5, BTNS_CHECKGROUP | BTNS_AUTOSIZE, 24, L""},
        {1051, 1, BTNS_CHECKGROUP | BTNS_AUTOSIZE, 24, L""},
        {1055, 2, BTNS_CHECKGROUP | BTNS_AUTOSIZE, 24, L""},
    };
    RunNew([&](EditorWindow& editor) {
        ASSERT_EQ(editor.Ask(IDC_EDITOR_BAR, TB_BUTTONCOUNT), 14);
        for (size_t i = 0; i < std::size(expected); ++i) {
            TBBUTTON button{};
            editor.Ask(IDC_EDITOR_BAR, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
            EXPECT_EQ(button.idCommand, expected[i].command) << i;
            EXPECT_EQ(button.fsStyle & ~BTNS_SHOWTEXT, expected[i].style) << i;
            EXPECT_EQ((button.fsStyle & BTNS_SHOWTEXT) != 0, *expected[i].text != 0) << i;
            if (!button.idCommand)
                continue;
            EXPECT_EQ(button.iBitmap, expected[i].image) << i;
            EXPECT_EQ(editor.BarWidth(button.idCommand), Scale(expected[i].width)) << i;
            EXPECT_EQ(editor.BarText(button.idCommand), expected[i].text) << i;
        }
        EXPECT_EQ(HIWORD(editor.Ask(IDC_EDITOR_BAR, TB_GETBUTTONSIZE)), Scale(21));
        const auto images = reinterpret_cast<HIMAGELIST>(editor.Ask(IDC_EDITOR_BAR, TB_GETIMAGELIST));
        int cx = 0, cy = 0;
        ASSERT_TRUE(ImageList_GetIconSize(images, &cx, &cy));
        EXPECT_EQ(cx, Scale(12));
        EXPECT_EQ(ImageList_GetImageCount(images), 16);
        const auto greyed = reinterpret_cast<HIMAGELIST>(editor.Ask(IDC_EDITOR_BAR, TB_GETDISABLEDIMAGELIST));
        EXPECT_NE(greyed, images);
        EXPECT_EQ(ImageList_GetImageCount(greyed), 16);
    });
}

// The rows of a control's area in which a colour of the pictures is seen: the first, and behind the last.
std::pair<int, int> PicturedRows(HWND control, const RECT& area)
{
    constexpr COLORREF kOutline = RGB(0x1F, 0x2A, 0x3C), kTick = RGB(0x1E, 0x7A, 0x3C);
    UpdateWindow(control);
    HDC dc = GetDC(control);
    std::pair<int, int> rows{0, 0};
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x) {
            const COLORREF color = GetPixel(dc, x, y);
            if (color == kOutline || color == kTick)
                rows = {rows.second ? rows.first : y, y + 1};
        }
    ReleaseDC(control, dc);
    return rows;
}

// As the texts stand; the picture of Assign Categories takes its whole height.
TEST_F(EntryEditorTest, TheBarHasItsPicturesInTheMiddleOfItsButtons)
{
    RunNew([](EditorWindow& editor) {
        RECT button{};
        editor.Ask(IDC_EDITOR_BAR, TB_GETRECT, CMD_ASSIGN_CATEGORIES, reinterpret_cast<LPARAM>(&button));
        const auto [first, end] = PicturedRows(editor.Item(IDC_EDITOR_BAR), button);
        EXPECT_EQ(end - first, Scale(12));
        EXPECT_NEAR(first - button.top, button.bottom - end, 1);
    });
}

TEST_F(EntryEditorTest, TheBarTellsWhatItsButtonsAre)
{
    const std::pair<int, const wchar_t*> tips[] = {
        {1054, L"Timer On/Off"},
        {1030, L""},
        {1020, L""},
        {1050, L"TimeStamp"},
        {1024, L"Save"},
        {1040, L""},
        {1053, L"Edit Categories"},
        {1052, L"Edit Entry"},
        {1051, L"Assign Categories"},
        {1055, L"Assign Contacts"},
        {0, L""},
    };
    RunNew([&](EditorWindow& editor) {
        for (const auto& [command, expected] : tips) {
            wchar_t text[80] = L"?";
            NMTBGETINFOTIPW tip{};
            tip.hdr = {editor.Item(IDC_EDITOR_BAR), IDC_EDITOR_BAR, static_cast<UINT>(TBN_GETINFOTIPW)};
            tip.pszText = text;
            tip.cchTextMax = 80;
            tip.iItem = command;
            SendMessageW(editor.Window(), WM_NOTIFY, IDC_EDITOR_BAR, reinterpret_cast<LPARAM>(&tip));
            EXPECT_STREQ(text, expected) << command;
        }
    });
}

TEST_F(EntryEditorTest, TheBarStartsInTheEditEntryView)
{
    RunNew([&](EditorWindow& editor) {
        EXPECT_TRUE(editor.BarState(CMD_EDIT_ENTRY_VIEW) & TBSTATE_CHECKED);
        for (const int enabled :
             {CMD_TIMER, CMD_TIME_STAMP, CMD_ZOOM, CMD_PRIORITY, CMD_SENSITIVITY, CMD_EDIT_ENTRY_VIEW})
            EXPECT_TRUE(editor.BarState(enabled) & TBSTATE_ENABLED) << enabled;
        EXPECT_FALSE(editor.BarState(CMD_EDIT_CATEGORIES) & TBSTATE_ENABLED);
        EXPECT_FALSE(editor.BarState(CMD_TIMER) & TBSTATE_CHECKED);
    });
}

TEST_F(EntryEditorTest, TheCaptionShowsTheProgramsIcon)
{
    RunNew([&](EditorWindow& editor) {
        EXPECT_NE(SendMessageW(editor.Window(), WM_GETICON, ICON_SMALL, 0), 0);
    });
}

TEST_F(EntryEditorTest, OpeningClearsTheTimersLastTick)
{
    Own().SetNumber(kSettings, L"Tmrh", 5);
    Own().SetNumber(kSettings, L"Tmrl", 6);
    RunNew([&](EditorWindow& editor) { EXPECT_EQ(editor.BarText(CMD_TIMER), L"Off"); });
    EXPECT_EQ(Own().GetNumber(kSettings, L"Tmrh", 99), 0u);
    EXPECT_EQ(Own().GetNumber(kSettings, L"Tmrl", 99), 0u);
}

TEST_F(EntryEditorTest, WithoutTheCategoriesLineTheBodyIsNoShorter)
{
    int with = 0;
    RunNew([&](EditorWindow& editor) {
        with = Height(editor.Rect(IDC_BODY));
        EXPECT_TRUE(IsShown(editor.Item(IDC_CATEGORIES_LABEL)));
        EXPECT_TRUE(IsShown(editor.Item(IDC_CATEGORIES_LINE)));
    });
    Own().SetNumber(kOptions, L"DispCats", 0);
    RunNew([&](EditorWindow& editor) {
        EXPECT_GE(Height(editor.Rect(IDC_BODY)), with);
        EXPECT_LE(editor.Rect(IDC_BODY).bottom, editor.Rect(IDOK).top);
        EXPECT_FALSE(IsShown(editor.Item(IDC_CATEGORIES_LABEL)));
        EXPECT_FALSE(IsShown(editor.Item(IDC_CATEGORIES_LINE)));
    });
}

TEST_F(EntryEditorTest, ASettingsChangeBringsTheLineInAndOut)
{
    Own().SetNumber(kOptions, L"DispCats", 0);
    RunNew([&](EditorWindow& editor) {
        const RECT before = editor.Rect(IDC_BODY);
        Own().SetNumber(kOptions, L"DispCats", 1);
        for (int i = 0; i < 3; ++i) {
            editor.TellOfChange(L"intl");
            const RECT body = editor.Rect(IDC_BODY);
            EXPECT_EQ(Height(body), Height(before) - Scale(22));
            EXPECT_EQ(editor.Rect(IDC_CATEGORIES_LABEL).top, body.bottom + Scale(5));
            EXPECT_EQ(Height(editor.Rect(IDC_CATEGORIES_LABEL)), Scale(20));
            EXPECT_EQ(editor.Rect(IDC_CATEGORIES_LINE).left,
                      editor.Rect(IDC_CATEGORIES_LABEL).right + Scale(5));
            EXPECT_TRUE(IsShown(editor.Item(IDC_CATEGORIES_LABEL)));
            EXPECT_TRUE(IsShown(editor.Item(IDC_CATEGORIES_LINE)));
        }
        Own().SetNumber(kOptions, L"DispCats", 0);
        editor.TellOfChange(L"intl");
        EXPECT_EQ(Height(editor.Rect(IDC_BODY)), Height(before) - Scale(22));
        EXPECT_FALSE(IsShown(editor.Item(IDC_CATEGORIES_LABEL)));
        EXPECT_FALSE(IsShown(editor.Item(IDC_CATEGORIES_LINE)));
        EXPECT_FALSE(editor.SaveEnabled());
    });
}

TEST_F(EntryEditorTest, ABroadcastThatMeansNothingHereMovesNothing)
{
    RunNew([](EditorWindow& editor) {
        const RECT body = editor.Rect(IDC_BODY);
        const RECT label = editor.Rect(IDC_CATEGORIES_LABEL);
        SendMessageW(editor.Window(), WM_SETTINGCHANGE, 0, 0);
        SendMessageW(editor.Window(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
        SendMessageW(editor.Window(), WM_SETTINGCHANGE, SPI_SETWORKAREA, 0); // of another monitor
        for (const wchar_t* section : {L"Environment", L"ImmersiveColorSet", L"Policy"})
            editor.TellOfChange(section);
        ExpectSameRect(editor.Rect(IDC_BODY), body);
        ExpectSameRect(editor.Rect(IDC_CATEGORIES_LABEL), label);
    });
}

TEST_F(EntryEditorTest, TheMovedCategoriesLineIsPaintedAnew)
{
    RunNew([](EditorWindow& editor) {
        const int controls[] = {IDC_CATEGORIES_LABEL, IDC_CATEGORIES_LINE};
        for (const int control : controls)
            UpdateWindow(editor.Item(control));
        editor.TellOfChange(L"intl");
        for (const int control : controls) {
            RECT whole{};
            GetClientRect(editor.Item(control), &whole);
            RECT unpainted{};
            GetUpdateRect(editor.Item(control), &unpainted, FALSE);
            ExpectSameRect(unpainted, whole);
        }
    });
}

TEST_F(EntryEditorTest, AnotherDateFormatGetsTheWidthThatItNeeds)
{
    RECT before{};
    RunNew([&](EditorWindow& editor) { before = editor.Rect(IDC_SUBJECT); });
    const ScopedLocaleSetting format(LOCALE_SSHORTDATE, L"dddd, MMMM dd, yyyy");
    RunNew([&](EditorWindow& editor) {
        const RECT date = editor.Rect(IDC_START_DATE);
        const RECT subject = editor.Rect(IDC_SUBJECT);
        EXPECT_GT(Width(date), Scale(86));
        EXPECT_EQ(editor.Rect(IDC_START_TIME).left, date.right + Scale(3));
        EXPECT_GT(subject.left, before.left);
        EXPECT_EQ(subject.right, before.right) << "the subject gives way";
    });
}

TEST_F(EntryEditorTest, CtrlASelectsTheWholeBody)
{
    RunNew([](EditorWindow& editor) {
        editor.Enter(IDC_BODY, L"one\r\ntwo");
        const SelectionLog log(editor.Item(IDC_BODY));
        SendMessageW(editor.Item(IDC_BODY), WM_CHAR, 1, 0);
        EXPECT_TRUE(log.AllSelected());
    });
}

TEST_F(EntryEditorTest, AChangedWorkAreaIsFilledAnew)
{
    const RECT before = WorkArea();
    RunNew([&](EditorWindow& editor) {
        const RECT body = editor.Rect(IDC_BODY);
        const RECT smaller{before.left, before.top + 40, before.right - 60, before.bottom};
        const ScopedWorkArea area(editor.Window(), smaller);
        RECT window{};
        GetWindowRect(editor.Window(), &window);
        EXPECT_TRUE(EqualRect(&window, &smaller));
        EXPECT_EQ(Width(editor.Rect(IDC_BODY)), Width(body) - 60);
        EXPECT_LT(Height(editor.Rect(IDC_BODY)), Height(body));
    });
}

// The fonts of a dialog and of its controls are the dialog manager's, which does nothing of it under Wine.
TEST_F(EntryEditorTest, WhatTheEditorMakesFollowsAnotherResolutionAndComesBack)
{
    RunNew([&](EditorWindow& editor) {
        const auto sizes = [&] {
            std::map<std::string, int> seen;
            for (const int command :
                 {CMD_PRIORITY, CMD_SENSITIVITY, CMD_ZOOM, CMD_TIME_STAMP, CMD_ASSIGN_CATEGORIES,
                  CMD_EDIT_ENTRY_VIEW, CMD_EDIT_CATEGORIES, CMD_TIMER, CMD_ASSIGN_CONTACTS, CMD_SAVE})
                seen["button " + std::to_string(command)] = editor.BarWidth(command);
            seen["row"] = HIWORD(editor.Ask(IDC_EDITOR_BAR, TB_GETBUTTONSIZE));
            int cy = 0;
            for (const UINT list : {UINT{TB_GETIMAGELIST}, UINT{TB_GETDISABLEDIMAGELIST}})
                ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(editor.Ask(IDC_EDITOR_BAR, list)),
                                      &seen["images " + std::to_string(list)], &cy);
            LOGFONTW font{};
            GetObjectW(reinterpret_cast<HFONT>(editor.Ask(IDC_BODY, WM_GETFONT)), sizeof font, &font);
            seen["body"] = font.lfHeight;
            seen["date"] = Width(editor.Rect(IDC_START_DATE));
            seen["cancel"] = Width(editor.Rect(IDCANCEL));
            return seen;
        };
        const auto before = sizes();
        const RECT body = editor.Rect(IDC_BODY), bar = editor.Rect(IDC_EDITOR_BAR);
        TellResolution(editor.Window(), 2);
        for (const auto& [name, size] : sizes())
            EXPECT_NEAR(size, 2 * before.at(name), 1) << name;
        RECT window{};
        GetWindowRect(editor.Window(), &window);
        const RECT area = WorkArea();
        EXPECT_TRUE(EqualRect(&window, &area)) << "it fills the work area of where it is";
        TellResolution(editor.Window(), 1, 2);
        EXPECT_EQ(sizes(), before);
        const RECT bodyBack = editor.Rect(IDC_BODY), barBack = editor.Rect(IDC_EDITOR_BAR);
        EXPECT_TRUE(EqualRect(&body, &bodyBack));
        EXPECT_TRUE(EqualRect(&bar, &barBack));
        EXPECT_FALSE(editor.SaveEnabled()) << "nothing of the entry has changed";
    });
}

TEST_F(EntryEditorTest, HelpIsAnsweredOnceAndByTheEditor)
{
    const NothingStarts nothing;
    int ownerAsked = 0;
    TestParent owner([&](HWND, UINT message, WPARAM, LPARAM, LRESULT*) {
        ownerAsked += message == WM_HELP;
        return false;
    });
    const MessageBoxAnswerer boxes;
    ModalDriver driver([&](HWND window) {
        EditorWindow editor(window);
        HELPINFO help{};
        help.cbSize = sizeof help;
        help.iContextType = HELPINFO_WINDOW;
        EXPECT_EQ(SendMessageW(window, WM_HELP, 0, reinterpret_cast<LPARAM>(&help)), TRUE);
        SendMessageW(editor.Item(IDC_BODY), WM_HELP, 0, reinterpret_cast<LPARAM>(&help)); // as F1 does
        editor.Cancel();
    });
    CEOID id = 0;
    EXPECT_EQ(OpenEntryEditor(Own(), owner.Handle(), &id), 0);
    EXPECT_EQ(ownerAsked, 0);
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    for (const MessageBoxAnswerer::Box& box : boxes.Boxes()) {
        EXPECT_EQ(box.text, L"Error starting help");
        EXPECT_EQ(box.caption, L"PegHelp.exe not found");
    }
}

TEST_F(EntryEditorTest, OkReturnsOneAndCancelZero)
{
    EXPECT_EQ(RunNew([](EditorWindow& editor) { editor.Ok(); }), 1);
    EXPECT_EQ(RunNew([](EditorWindow& editor) { editor.Cancel(); }), 0);
    EXPECT_EQ(RunNew([](EditorWindow& editor) { SendMessageW(editor.Window(), WM_CLOSE, 0, 0); }), 0);
}

TEST_F(EntryEditorTest, AnUntouchedEntryIsNotWritten)
{
    CEOID id = 0;
    EXPECT_EQ(Run(&id, [](EditorWindow& editor) { editor.Ok(); }), 1);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(Count(), 0u);
}

TEST_F(EntryEditorTest, AnUntouchedEntryIsCancelledWithoutAQuestion)
{
    const MessageBoxAnswerer boxes;
    RunNew([](EditorWindow& editor) { editor.Cancel(); });
    EXPECT_TRUE(boxes.Boxes().empty());
}

TEST_F(EntryEditorTest, CancellingAChangedEntryAsksFirst)
{
    const MessageBoxAnswerer boxes({IDNO, IDYES});
    CEOID id = 0;
    const int result = Run(&id, [](EditorWindow& editor) {
        editor.Enter(IDC_SUBJECT, L"Lunch");
        editor.Cancel();
        EXPECT_EQ(editor.Text(IDC_SUBJECT), L"Lunch");
        EXPECT_TRUE(editor.SaveEnabled());
        editor.Cancel();
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(id, 0u);
    EXPECT_EQ(Count(), 0u);
    ASSERT_EQ(boxes.Boxes().size(), 2u);
    EXPECT_EQ(boxes.Boxes()[0].text, L"Cancel changes?");
    EXPECT_EQ(boxes.Boxes()[0].caption, L"Warning");
    EXPECT_EQ(boxes.Boxes()[0].answers, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(boxes.Boxes()[0].icon, LoadIconW(nullptr, IDI_QUESTION));
}

TEST_F(EntryEditorTest, CancellingUnchecksTheTimer)
{
    RunNew([](EditorWindow& editor) {
        editor.Ask(IDC_EDITOR_BAR, TB_CHECKBUTTON, CMD_TIMER, TRUE);
        editor.Cancel();
        EXPECT_FALSE(editor.BarState(CMD_TIMER) & TBSTATE_CHECKED);
    });
}

} // namespace
