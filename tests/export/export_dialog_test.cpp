#include "export/export_dialog.h"

#include "export/export_window.h"
#include "support/help_requests.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace {

using Texts = std::vector<std::wstring>;

const Texts kAllFields{L"Date",     L"Subject",     L"Body",     L"Categories", L"Type",
                       L"Priority", L"Sensitivity", L"End Time", L"Duration",   L"Contacts"};

DWORD StyleOf(HWND window)
{
    return static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
}

TEST_F(ExportDialogTest, OffersCommaSeparatedValues)
{
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        EXPECT_EQ(WindowText(dialog.Window()), L"Export Journal...");
        EXPECT_EQ(dialog.Text(kFormat), L"Format\nComma Separated Value");
        EXPECT_EQ(dialog.Text(kAll), L"&Export all Journal entries");
        EXPECT_EQ(dialog.Text(kSelected), L"Export only &selected Journal entries");
        EXPECT_EQ(dialog.Text(kFiltered), L"Export filtered journal entries");
        EXPECT_EQ(dialog.Text(kHeader), L"Write column &header to file");
        EXPECT_TRUE(dialog.IsEnabled(kFields));
        EXPECT_TRUE(dialog.IsOn(kAll));
        EXPECT_FALSE(dialog.IsOn(kSelected));
        EXPECT_FALSE(dialog.IsOn(kFiltered));
        EXPECT_TRUE(dialog.IsShown(kHeader));
        EXPECT_FALSE(dialog.IsShown(kProgress));
    });
}

TEST_F(ExportDialogTest, SimpleTextHasNoFieldsToChoose)
{
    Run(ExportFormat::SimpleText, [](ExportWindow& dialog) {
        EXPECT_EQ(dialog.Text(kFormat), L"Format\nSimple Text");
        EXPECT_EQ(dialog.Text(kHeader), L"Write Labels to File");
        EXPECT_FALSE(dialog.IsEnabled(kFields));
        EXPECT_EQ(dialog.Fields(), kAllFields);
    });
}

TEST_F(ExportDialogTest, AllFieldsAreSelectedAtFirst)
{
    Run(ExportFormat::CommaSeparated, [&](ExportWindow& dialog) {
        EXPECT_EQ(dialog.Fields(), kAllFields);
        EXPECT_EQ(dialog.SelectedFields(), kAllFields);
        EXPECT_EQ(dialog.Ask(kFields, LB_GETTOPINDEX), 0);
        for (const ZColumn& column : m_columns.columns)
            EXPECT_EQ(column.Has(kColumnExport), column.Property() != 106) << column.Property();
    });
}

TEST_F(ExportDialogTest, FieldsComeInTheOrderOfTheColumns)
{
    MoveColumn(&m_columns, 10, 0);
    m_columns.columns[1].Add(kColumnNeverOffered);
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        EXPECT_EQ(dialog.Fields(), (Texts{L"Contacts", L"Subject", L"Body", L"Categories", L"Type",
                                          L"Priority", L"Sensitivity", L"End Time", L"Duration"}));
    });
}

TEST_F(ExportDialogTest, SelectedNeedsASelection)
{
    Run(ExportFormat::CommaSeparated,
        [](ExportWindow& dialog) { EXPECT_FALSE(dialog.IsEnabled(kSelected)); });
    m_selection.Append(1);
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) { EXPECT_TRUE(dialog.IsEnabled(kSelected)); });
}

TEST_F(ExportDialogTest, FilteredNeedsAFilter)
{
    Run(ExportFormat::CommaSeparated,
        [](ExportWindow& dialog) { EXPECT_FALSE(dialog.IsEnabled(kFiltered)); });
    FilterMonth(5);
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        EXPECT_TRUE(dialog.IsEnabled(kFiltered));
        EXPECT_FALSE(dialog.IsEnabled(kSelected));
        EXPECT_TRUE(dialog.IsOn(kAll));
    });
}

TEST_F(ExportDialogTest, TheFlagIsOnUntilItIsTurnedOff)
{
    const auto isOn = [&] {
        bool on = false;
        Run(ExportFormat::SimpleText, [&](ExportWindow& dialog) { on = dialog.IsOn(kHeader); });
        return on;
    };
    EXPECT_TRUE(isOn());
    Own().SetNumber(L"Settings", L"WriteHeader", 0);
    EXPECT_FALSE(isOn());
    Own().SetNumber(L"Settings", L"WriteHeader", 7);
    EXPECT_TRUE(isOn());
}

TEST_F(ExportDialogTest, CancelWritesAndStoresNothing)
{
    AddEntries(2);
    for (const bool byKey : {true, false}) {
        Run(ExportFormat::CommaSeparated, [=](ExportWindow& dialog) {
            dialog.Click(kHeader);
            if (byKey)
                dialog.Key(VK_ESCAPE);
            else
                SendMessageW(dialog.Window(), WM_CLOSE, 0, 0);
            EXPECT_FALSE(IsWindowVisible(dialog.Window()));
        });
        EXPECT_EQ(GetFileAttributesW(m_file.Path().c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(Own().GetNumber(L"Settings", L"WriteHeader", 99), 99u);
        EXPECT_EQ(Own().GetNumber(L"Settings", L"Column0", 99), 99u);
    }
}

TEST_F(ExportDialogTest, TheKeyboardAloneDoesIt)
{
    const CEOID one = AddEntry(1, L"one");
    AddEntry(2, L"two");
    m_selection.Append(one);
    const MessageBoxAnswerer answerer;
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        EXPECT_TRUE(dialog.HasFocus(UsesWideLayout(WorkArea(), SystemDpi()) ? kFields : kAll));
        dialog.AltKey('S');
        EXPECT_TRUE(dialog.IsOn(kSelected));
        dialog.AltKey('E');
        EXPECT_TRUE(dialog.IsOn(kAll));
        dialog.AltKey('S');
        dialog.AltKey('H');
        EXPECT_FALSE(dialog.IsOn(kHeader));
        dialog.AltKey('F');
        EXPECT_TRUE(dialog.HasFocus(kFields));
        dialog.Key(VK_HOME);
        dialog.Key(VK_SPACE);
        EXPECT_EQ(dialog.SelectedFields().front(), L"Subject");
        dialog.Key(VK_RETURN);
    });
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Exported 1 record");
    EXPECT_EQ(m_file.Bytes(), "\"one\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n");
}

TEST_F(ExportDialogTest, TheArrowsComeToTheFilteredOnes)
{
    FilterMonth(5);
    Run(ExportFormat::SimpleText, [](ExportWindow& dialog) {
        dialog.Focus(kAll);
        dialog.Key(VK_DOWN);
        EXPECT_TRUE(dialog.IsOn(kFiltered)) << "past the selected ones, of which there are none";
        EXPECT_FALSE(dialog.IsOn(kAll));
        dialog.Key(VK_UP);
        EXPECT_TRUE(dialog.IsOn(kAll));
    });
}

TEST_F(ExportDialogTest, F1AsksForItsPage)
{
    const HelpRequests requests;
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) { dialog.Key(VK_F1); });
    EXPECT_EQ(requests.Asked(), (std::vector<std::wstring>{L"pellwyn.htm#Export_Window"}));
}

TEST_F(ExportDialogTest, IsWholeInTheMiddleOfTheScreen)
{
    Run(ExportFormat::CommaSeparated, [](ExportWindow& dialog) {
        dialog.ExpectWholeOnScreen();
        const RECT area = WorkArea();
        RECT window{};
        GetWindowRect(dialog.Window(), &window);
        EXPECT_NEAR(window.left + window.right, area.left + area.right, 2);
        EXPECT_NEAR(window.top + window.bottom, area.top + area.bottom, 2);
    });
}

TEST_F(ExportDialogTest, AFailedDialogIsNoCrash)
{
    const WindowRefuser refuser(L"#32770");
    RunExportDialog(nullptr, m_file.Path(), ExportFormat::SimpleText, {m_columns, m_selection, Own()});
    EXPECT_EQ(GetFileAttributesW(m_file.Path().c_str()), INVALID_FILE_ATTRIBUTES);
}

// Both templates, not shown.
class ExportLayout : public testing::TestWithParam<int> {
  protected:
    ExportLayout()
        : m_dialog(CreateDialogParamW(
              GetModuleHandleW(nullptr), MAKEINTRESOURCEW(GetParam()), nullptr,
              [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0))
    {
        EXPECT_NE(m_dialog, nullptr);
    }
    ~ExportLayout() override { DestroyWindow(m_dialog); }

    RECT Units(int width, int height) const
    {
        RECT rect{0, 0, width, height};
        MapDialogRect(m_dialog, &rect);
        return rect;
    }
    RECT Place(HWND item) const
    {
        RECT rect{};
        GetWindowRect(item, &rect);
        MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }
    RECT Place(int id) const { return Place(GetDlgItem(m_dialog, id)); }
    // What a text takes, in the dialog's font.
    SIZE Needed(const std::wstring& text) const
    {
        HDC dc = GetDC(m_dialog);
        HGDIOBJ before = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(m_dialog, WM_GETFONT, 0, 0)));
        RECT rect{};
        DrawTextW(dc, text.c_str(), -1, &rect, DT_CALCRECT);
        SelectObject(dc, before);
        ReleaseDC(m_dialog, dc);
        return {rect.right, rect.bottom};
    }
    bool IsWide() const { return GetParam() == 144; }

    HWND m_dialog;
};

TEST_P(ExportLayout, HasItsSize)
{
    RECT client{};
    GetClientRect(m_dialog, &client);
    const RECT wanted = IsWide() ? Units(276, 97) : Units(146, 162);
    EXPECT_EQ(client.right, wanted.right);
    EXPECT_EQ(client.bottom, wanted.bottom);
    EXPECT_EQ(WindowText(m_dialog), L"Export Journal...");
}

TEST_P(ExportLayout, NothingIsCutOffOrCovered)
{
    RECT client{};
    GetClientRect(m_dialog, &client);
    std::vector<HWND> items;
    for (HWND item = GetWindow(m_dialog, GW_CHILD); item; item = GetWindow(item, GW_HWNDNEXT))
        items.push_back(item);
    EXPECT_EQ(items.size(), 10u);
    for (HWND item : items) {
        const RECT place = Place(item);
        RECT seen{};
        IntersectRect(&seen, &client, &place);
        EXPECT_TRUE(EqualRect(&seen, &place)) << GetDlgCtrlID(item);
        for (HWND other : items) {
            const RECT otherPlace = Place(other);
            const bool share = IntersectRect(&seen, &otherPlace, &place) != 0;
            const int id = GetDlgCtrlID(item), otherId = GetDlgCtrlID(other);
            const bool mayShare = item == other || (id == kHeader && otherId == kProgress) ||
                                  (id == kProgress && otherId == kHeader);
            EXPECT_TRUE(mayShare || !share) << id << " and " << otherId;
        }
    }
}

TEST_P(ExportLayout, TheBarStandsWhereTheCheckBoxStands)
{
    const RECT box = Place(kHeader), bar = Place(kProgress);
    EXPECT_TRUE(EqualRect(&box, &bar));
}

TEST_P(ExportLayout, ControlsStandInTheirOrder)
{
    const LONG format = Place(kFormat).top, scope = Place(kAll).top, fields = Place(kFields).top;
    EXPECT_LT(Place(kAll).top, Place(kSelected).top);
    EXPECT_LT(Place(kSelected).top, Place(kFiltered).top);
    EXPECT_LT(format, scope);
    EXPECT_LT(Place(kFiltered).top, Place(kHeader).top);
    if (IsWide()) {
        EXPECT_LT(Place(kFields).right, Place(kAll).left) << "the fields on the left";
        EXPECT_LT(Place(kFields).right, Place(kHeader).left);
    } else {
        EXPECT_LT(Place(kFiltered).bottom, fields);
        EXPECT_LT(Place(kFields).bottom, Place(kHeader).top);
    }
}

TEST_P(ExportLayout, TheLabelStandsAboveTheFields)
{
    HWND label = GetWindow(GetDlgItem(m_dialog, kFields), GW_HWNDPREV);
    EXPECT_EQ(WindowText(label), L"&Fields to export");
    EXPECT_EQ(Place(label).left, Place(kFields).left);
    EXPECT_LE(Place(label).bottom, Place(kFields).top);
}

TEST_P(ExportLayout, TheFieldsAreSelectedOneByOne)
{
    const DWORD style = StyleOf(GetDlgItem(m_dialog, kFields));
    EXPECT_NE(style & LBS_MULTIPLESEL, 0u);
    EXPECT_EQ(style & (LBS_SORT | LBS_NOSEL | LBS_EXTENDEDSEL), 0u);
    EXPECT_NE(style & WS_TABSTOP, 0u);
}

TEST_P(ExportLayout, TheScopesAreOneGroup)
{
    EXPECT_NE(StyleOf(GetDlgItem(m_dialog, kAll)) & WS_GROUP, 0u);
    EXPECT_EQ(StyleOf(GetDlgItem(m_dialog, kSelected)) & WS_GROUP, 0u);
    EXPECT_EQ(StyleOf(GetDlgItem(m_dialog, kFiltered)) & WS_GROUP, 0u);
    HWND next = GetWindow(GetDlgItem(m_dialog, kFiltered), GW_HWNDNEXT);
    EXPECT_NE(StyleOf(next) & WS_GROUP, 0u);
    for (const int id : {kAll, kSelected, kFiltered})
        EXPECT_EQ(StyleOf(GetDlgItem(m_dialog, id)) & BS_TYPEMASK, DWORD{BS_AUTORADIOBUTTON});
}

TEST_P(ExportLayout, TheKeyboardComesToAllOfThem)
{
    std::vector<int> stops, scopes;
    for (HWND item = GetNextDlgTabItem(m_dialog, nullptr, FALSE); stops.size() < 5;
         item = GetNextDlgTabItem(m_dialog, item, FALSE))
        stops.push_back(GetDlgCtrlID(item));
    EXPECT_EQ(stops, IsWide() ? (std::vector<int>{kFields, kAll, kHeader, IDOK, IDCANCEL})
                              : (std::vector<int>{kAll, kFields, kHeader, IDOK, IDCANCEL}));
    for (HWND item = GetDlgItem(m_dialog, kAll); scopes.size() < 4;
         item = GetNextDlgGroupItem(m_dialog, item, FALSE))
        scopes.push_back(GetDlgCtrlID(item));
    EXPECT_EQ(scopes, (std::vector<int>{kAll, kSelected, kFiltered, kAll}));
}

TEST_P(ExportLayout, TextsHaveRoom)
{
    const LONG box = Needed(L"\u25A1").cy + 4; // of a button, with the gap to its text
    for (const int id : {kAll, kSelected, kFiltered, kHeader}) {
        const std::wstring text = WindowText(GetDlgItem(m_dialog, id));
        const RECT place = Place(id);
        EXPECT_LE(Needed(text).cx + box, place.right - place.left) << id;
        EXPECT_LE(Needed(text).cy, place.bottom - place.top) << id;
    }
    for (const wchar_t* text : {L"Format\nComma Separated Value", L"Format\nSimple Text"}) {
        const RECT place = Place(kFormat);
        EXPECT_LE(Needed(text).cx, place.right - place.left);
        EXPECT_LE(Needed(text).cy, place.bottom - place.top);
    }
}

TEST_P(ExportLayout, OkIsTheDefault)
{
    EXPECT_EQ(LOWORD(SendMessageW(m_dialog, DM_GETDEFID, 0, 0)), 1);
    EXPECT_NE(StyleOf(GetDlgItem(m_dialog, 2)) & WS_TABSTOP, 0u);
}

INSTANTIATE_TEST_SUITE_P(Both, ExportLayout, testing::Values(144, 145));

TEST(ExportLayouts, TheWideOneIsForAWorkAreaWiderThanTall)
{
    EXPECT_TRUE(UsesWideLayout({0, 0, 641, 640}, 96));
    EXPECT_FALSE(UsesWideLayout({0, 0, 640, 640}, 96));
    EXPECT_FALSE(UsesWideLayout({0, 0, 240, 320}, 96));
    EXPECT_TRUE(UsesWideLayout({0, 1000, 800, 1600}, 96));
    EXPECT_FALSE(UsesWideLayout({1000, 0, 1400, 600}, 96));
}

// 276 dialog units are 828 pixels at 192 dpi.
TEST(ExportLayouts, TheTallOneIsForAWorkAreaThatTheWideOneDoesNotFit)
{
    EXPECT_TRUE(UsesWideLayout({0, 0, 640, 240}, 144));
    EXPECT_FALSE(UsesWideLayout({0, 0, 800, 600}, 192));
    EXPECT_TRUE(UsesWideLayout({0, 0, 828, 600}, 192));
}

} // namespace
