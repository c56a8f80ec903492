#include <gmock/gmock.h>

#include <memory>

#include "list/entry_list_fixture.h"

namespace {

DWORD Stored(const wchar_t* name)
{
    return App().GetNumber(kSettings, name, 0xDEAD);
}

TEST_F(EntryListTest, NoListWithoutAParent)
{
    EXPECT_EQ(m_list.Create(nullptr, &m_columns, LVS_REPORT, 0), nullptr);
    EXPECT_EQ(m_list.Create(reinterpret_cast<HWND>(0x7FFF0001), &m_columns, LVS_REPORT, 0), nullptr);
    EXPECT_EQ(m_list.Handle(), nullptr);
    // Nothing has been loaded, so nothing is saved, and nothing else has anything to work on.
    m_list.Destroy();
    EXPECT_EQ(Stored(L"iCols"), 0xDEADu);
    m_list.Refresh();
    m_list.SelectRecord(1);
    m_list.Place(0);
    EXPECT_FALSE(m_list.BuildColumns());
}

TEST_F(EntryListTest, TheControlIsAVirtualReport)
{
    CreateList();
    wchar_t name[32];
    GetClassNameW(Handle(), name, 32);
    EXPECT_STREQ(name, L"SysListView32");
    EXPECT_EQ(GetParent(Handle()), m_parent.Handle());
    const DWORD wanted = WS_CHILD | WS_VISIBLE | LVS_OWNERDATA | LVS_REPORT | LVS_SHOWSELALWAYS;
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(Handle(), GWL_STYLE)) & wanted, wanted);
    EXPECT_EQ(ListView_GetExtendedListViewStyle(Handle()), DWORD{LVS_EX_FULLROWSELECT});
}

TEST_F(EntryListTest, ListAndHeaderHaveTheirOwnImages)
{
    CreateList();
    HIMAGELIST rows = ListView_GetImageList(Handle(), LVSIL_SMALL);
    HIMAGELIST header = Header_GetImageList(Header());
    ASSERT_NE(rows, nullptr);
    ASSERT_NE(header, nullptr);
    EXPECT_NE(rows, header);
    EXPECT_EQ(ImageList_GetImageCount(rows), 3)
        << "the priorities'; number 3 is none of them and draws nothing";
    EXPECT_EQ(ImageList_GetImageCount(header), 5);
    int width = 0;
    int height = 0;
    EXPECT_TRUE(ImageList_GetIconSize(rows, &width, &height));
    EXPECT_EQ(width, 12);
}

TEST_F(EntryListTest, ShowsTheNewestEntryFirst)
{
    AddEntry(10, L"older");
    AddEntry(20, L"newer");
    CreateList();
    Paint();
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(HeaderText(0), L"Date");
    EXPECT_EQ(HeaderText(1), L"Subject");
    EXPECT_EQ(Column(0).cx, WorkAreaRight() / 3);
    EXPECT_EQ(Column(1).cx, 2 * WorkAreaRight() / 3);
    EXPECT_EQ(Cell(0, 1), L"newer");
    EXPECT_EQ(Cell(1, 1), L"older");
    EXPECT_EQ(Cell(0, 0), FormatRecord(1, 0, nullptr).date + Cell(0, 0)); // some date
    EXPECT_FALSE(Cell(0, 0).empty());
    EXPECT_EQ(Cell(0, 2), L"");
    EXPECT_TRUE(m_blankRows.empty());
}

TEST_F(EntryListTest, ItemsCarryTheirRecord)
{
    const CEOID id = AddEntry(10, L"only");
    CreateList();
    Paint();
    NMLVDISPINFOW info{};
    info.hdr = {Handle(), 0, static_cast<UINT>(LVN_GETDISPINFOW)};
    info.item.mask = LVIF_PARAM | LVIF_STATE;
    info.item.state = LVIS_CUT;
    SendMessageW(m_parent.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.item.lParam, static_cast<LPARAM>(id));
    EXPECT_EQ(info.item.state, UINT{LVIS_CUT});
}

TEST_F(EntryListTest, LongSubjectsShowWhole)
{
    const std::wstring subject = std::wstring(700, L'x') + L" end";
    AddEntry(10, subject);
    CreateList();
    Paint();
    EXPECT_EQ(Cell(0, 1), subject);
}

TEST_F(EntryListTest, HugeTextsAndBrokenRecordsAreShown)
{
    TestRecord()
        .Time(kPropDate, TimeCount(UINT64_MAX))
        .Text(kPropSubject, L"\xD800\xDC00\xD800")
        .Text(kPropBody, std::wstring(1'000'000, L'b'))
        .Time(kPropDuration, TimeCount(UINT64_MAX))
        .Blob(kPropCategories, {0xFFFFFFFF, 1})
        .Short(kPropPriority, SHRT_MAX)
        .Write();
    TestRecord().Text(kPropSubject, L"odd").Short(kPropPriority, SHRT_MIN).Write();
    TestRecord().Text(kPropSubject, std::wstring(1'000'000, L's')).Write();
    App().SetNumber(kSettings, L"iCols", 4);
    App().SetNumber(kSettings, L"Column0", 0x6B01000C); // priority
    App().SetNumber(kSettings, L"Column1", 0x66064000); // subject
    App().SetNumber(kSettings, L"Column2", 0x67064000); // body
    App().SetNumber(kSettings, L"Column3", 0x6E064000); // duration
    CreateList();
    Paint();
    ASSERT_EQ(RowCount(), 3);
    std::vector<std::wstring> subjects;
    for (int row = 0; row < 3; ++row) {
        subjects.push_back(Cell(row, 1).substr(0, 10));
        EXPECT_EQ(Cell(row, 0), L"Normal");
        EXPECT_EQ(Cell(row, 2), subjects.back()[0] == L'\xD800' ? std::wstring(119, L'b') : L"");
        EXPECT_EQ(Cell(row, 3), L"0 minutes");
    }
    EXPECT_THAT(subjects, testing::UnorderedElementsAre(L"odd", L"\xD800\xDC00\xD800", L"ssssssssss"));
}

TEST_F(EntryListTest, TheListLiesBelowTheCommandBar)
{
    CreateList(30);
    RECT client{};
    GetClientRect(m_parent.Handle(), &client);
    RECT rect{};
    GetWindowRect(Handle(), &rect);
    EXPECT_EQ(rect.right - rect.left, client.right);
    EXPECT_EQ(rect.bottom - rect.top, client.bottom - 30);
    POINT origin{rect.left, rect.top};
    ScreenToClient(m_parent.Handle(), &origin);
    EXPECT_EQ(origin.y, 30);
    EXPECT_EQ(origin.x, 0);
    m_list.Place(client.bottom + 50);
    GetWindowRect(Handle(), &rect);
    EXPECT_EQ(rect.bottom - rect.top, 0);
}

TEST_F(EntryListTest, ATallPageHasNoBlankRow)
{
    AddEntries(200);
    CreateList();
    m_list.Place(-1200); // taller than any screen of the tests
    const int page = ListView_GetCountPerPage(Handle());
    ASSERT_GT(page, 60);
    Paint();
    for (int row = 0; row <= page; ++row)
        EXPECT_EQ(Cell(row, 1), L"entry " + std::to_wstring(199 - row));
    EXPECT_TRUE(m_blankRows.empty());
}

TEST_F(EntryListTest, LettersFindNothing)
{
    AddEntry(10, L"a");
    AddEntry(20, L"b");
    CreateList();
    Paint();
    LVFINDINFOW find{};
    find.flags = LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP;
    find.psz = L"a";
    EXPECT_EQ(SendMessageW(Handle(), LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)),
              -1);
    ClickRow(0);
    SendMessageW(Handle(), WM_CHAR, L'1', 0);
    PumpMessages();
    EXPECT_EQ(SelectedRows(), std::vector<int>{0});
}

TEST_F(EntryListTest, EmptyingTheControlClearsTheCache)
{
    AddEntry(10, L"x");
    CreateList();
    Paint();
    ASSERT_EQ(Cell(0, 1), L"x");
    ListView_DeleteAllItems(Handle());
    ListView_SetItemCount(Handle(), 1);
    EXPECT_EQ(Cell(0, 1), L"");
    Paint();
    EXPECT_EQ(Cell(0, 1), L"x");
}

TEST_F(EntryListTest, PriorityIsAnIconInTheFirstColumnOnly)
{
    TestRecord().Time(kPropDate, Instant(2000, 1, 3)).Short(kPropPriority, 2).Write();
    TestRecord().Time(kPropDate, Instant(2000, 1, 2)).Short(kPropPriority, 0).Write();
    TestRecord().Time(kPropDate, Instant(2000, 1, 1)).Write();
    App().SetNumber(kSettings, L"iCols", 2);
    App().SetNumber(kSettings, L"Column0", 0x6B01000D);
    App().SetNumber(kSettings, L"Column1", 0x6506401D);
    CreateList();
    Paint();
    EXPECT_EQ(HeaderText(0), L"");
    EXPECT_EQ(Column(0).iImage, 3);
    EXPECT_EQ(Column(0).cx, 16);
    EXPECT_EQ(HeaderText(1), L"Date");
    EXPECT_EQ(ImageOf(0, 0), 2);
    EXPECT_EQ(ImageOf(1, 0), 0);
    EXPECT_EQ(ImageOf(2, 0), -1);
    EXPECT_EQ(Cell(0, 0), L"High");

    m_columns.columns[0] = m_columns.columns[1];
    m_columns.columns[1].Copy(L"Priority", 107, kColumnShown | kColumnSortable, 50);
    EXPECT_TRUE(m_list.BuildColumns());
    Paint();
    EXPECT_EQ(HeaderText(1), L"Priority");
    EXPECT_EQ(Column(1).iImage, 0);
    EXPECT_EQ(ImageOf(0, 0), 3);
    EXPECT_EQ(Cell(0, 1), L"High");
}

TEST_F(EntryListTest, HeaderClicksFlipTheDirectionAndAreSaved)
{
    AddEntry(10, L"older");
    AddEntry(20, L"newer");
    CreateList();
    ClickHeader(0);
    Paint();
    EXPECT_EQ(Cell(0, 1), L"older");
    EXPECT_EQ(Column(0).iImage, kHeaderImageAscending);
    EXPECT_EQ(Stored(L"Column0") & 0x1D, 0x1Cu);
    EXPECT_EQ(Stored(L"iCols"), 2u);
    ClickHeader(0);
    Paint();
    EXPECT_EQ(Cell(0, 1), L"newer");
    EXPECT_EQ(Column(0).iImage, kHeaderImageDescending);
    EXPECT_EQ(Stored(L"Column0") & 0x1D, 0x1Du);
}

TEST_F(EntryListTest, SortingShowsTheHourglass)
{
    AddEntry(10, L"x");
    CreateList();
    HCURSOR before = LoadCursorW(nullptr, IDC_CROSS);
    SetCursor(before);
    m_list.ApplySort(m_columns.columns[1]);
    EXPECT_EQ(m_cursorWhileEmptying, LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_EQ(GetCursor(), before);
    m_list.Refresh();
    EXPECT_EQ(m_cursorWhileEmptying, before);
}

TEST_F(EntryListTest, AClickOnAnotherHeaderSortsByIt)
{
    AddEntry(10, L"b");
    AddEntry(20, L"a");
    CreateList();
    ClickHeader(1);
    Paint();
    SORTORDERSPEC sort{};
    App().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropSubject);
    EXPECT_EQ(sort.dwFlags, CEDB_SORT_DESCENDING);
    EXPECT_EQ(Cell(0, 1), L"b");
    EXPECT_EQ(Column(1).iImage, kHeaderImageDescending);
    EXPECT_EQ(Column(0).iImage, 0);
    EXPECT_EQ(Stored(L"Column0") & kColumnSort, 0u);
    EXPECT_EQ(Stored(L"Column1") & kColumnSort, kColumnSort);
}

// One that is not sortable sorts all the same and keeps its mark; the body changes the direction only.
TEST_F(EntryListTest, ColumnsWithoutASortMarkSortAllTheSame)
{
    AddEntry(10, L"b");
    AddEntry(20, L"a");
    App().SetNumber(kSettings, L"iCols", 3);
    App().SetNumber(kSettings, L"Column0", 0x6506401D); // date, the sort column
    App().SetNumber(kSettings, L"Column1", 0x67064008); // body
    App().SetNumber(kSettings, L"Column2", 0x68064008); // categories
    CreateList();
    SORTORDERSPEC sort{};
    ClickHeader(1);
    App().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropDate);
    EXPECT_EQ(sort.dwFlags, 0u);
    EXPECT_TRUE(m_columns.columns[0].Has(kColumnSort));
    ClickHeader(2);
    App().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropCategories);
    EXPECT_TRUE(m_columns.columns[0].Has(kColumnSort));
    EXPECT_FALSE(m_columns.columns[2].Has(kColumnSort));
}

TEST_F(EntryListTest, AHeaderClickShowsTheFirstSelectedRow)
{
    const std::vector<CEOID> ids = AddEntries(300);
    CreateList();
    m_list.SelectRecord(ids[10]);
    m_list.SelectRecord(ids[299]);
    ClickHeader(0); // the oldest first: the focus is in the last row
    EXPECT_EQ(SelectedRows(), (std::vector<int>{10, 299}));
    EXPECT_EQ(ListView_GetTopIndex(Handle()), 10);
    EXPECT_EQ(m_list.CurrentEntry(), ids[299]);
}

TEST_F(EntryListTest, CreationTakesTheSortOfTheSortColumn)
{
    AddEntry(10, L"b");
    AddEntry(20, L"a");
    App().SetNumber(kSettings, L"iCols", 1);
    App().SetNumber(kSettings, L"Column0", 0x6606401C); // subject, ascending
    CreateList();
    Paint();
    EXPECT_EQ(Cell(0), L"a");
    SORTORDERSPEC sort{};
    App().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropSubject);
}

TEST_F(EntryListTest, WithoutASortColumnTheJournalKeepsItsSort)
{
    AddEntry(10, L"b");
    App().SetNumber(kSettings, L"iCols", 1);
    App().SetNumber(kSettings, L"Column0", 0x6506400C);
    App().Journal().SetSort({kPropSubject, CEDB_SORT_DESCENDING}, 1);
    CreateList();
    EXPECT_EQ(RowCount(), 1);
    SORTORDERSPEC sort{};
    App().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropSubject);
    EXPECT_EQ(sort.dwFlags, CEDB_SORT_DESCENDING);
}

TEST_F(EntryListTest, ADraggedDividerSavesEveryColumn)
{
    CreateList();
    const int before = Column(0).cx;
    DragDivider(0, 25);
    EXPECT_EQ(Column(0).cx, before + 25);
    EXPECT_EQ(m_columns.columns[0].Width(), before + 25);
    EXPECT_EQ((Stored(L"Column0") >> 12) & 0xFFF, static_cast<DWORD>(before + 25));
    EXPECT_EQ(Stored(L"Column0") & 0xFFF, 0x1Du);
    for (int i = 0; i < 11; ++i)
        EXPECT_EQ(Stored((L"Column" + std::to_wstring(i)).c_str()),
                  m_columns.columns[static_cast<size_t>(i)].GetFlags());
    EXPECT_EQ(Stored(L"iCols"), 2u);
}

TEST_F(EntryListTest, WidthsOfTheHeaderAreNotTrusted)
{
    CreateList();
    const auto endTrack = [this](int column, HDITEMW* item) {
        NMHEADERW track{};
        track.hdr = {Header(), 0, HDN_ENDTRACKW};
        track.iItem = column;
        track.pitem = item;
        SendMessageW(m_parent.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&track));
    };
    HDITEMW item{};
    item.mask = HDI_WIDTH;
    item.cxy = 5000;
    endTrack(0, &item);
    EXPECT_EQ(m_columns.columns[0].Width(), 4095);
    item.cxy = -7;
    endTrack(0, &item);
    EXPECT_EQ(m_columns.columns[0].Width(), 0);
    item.cxy = 33;
    item.mask = HDI_TEXT;
    endTrack(0, &item);
    endTrack(0, nullptr);
    item.mask = HDI_WIDTH;
    for (const int column : {-1, 2, 11, 1000, INT_MIN, INT_MAX})
        endTrack(column, &item);
    EXPECT_EQ(m_columns.columns[0].Width(), 0);
    for (const ZColumn& column : m_columns.columns)
        EXPECT_NE(column.Width(), 33);
}

TEST_F(EntryListTest, ADoubleClickOnADividerFitsTheColumn)
{
    AddEntry(10, L"a subject");
    CreateList();
    Paint();
    RECT rect{};
    ASSERT_TRUE(Header_GetItemRect(Header(), 0, &rect));
    const LPARAM divider = MAKELPARAM(rect.right - 1, (rect.top + rect.bottom) / 2);
    for (const UINT down : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONDBLCLK}}) {
        PostMessageW(Header(), down, MK_LBUTTON, divider);
        PostMessageW(Header(), WM_LBUTTONUP, 0, divider);
    }
    PumpMessages();
    const int fitted = Column(0).cx;
    EXPECT_LT(fitted, WorkAreaRight() / 3);
    EXPECT_GT(fitted, 20);
    EXPECT_EQ((Stored(L"Column0") >> 12) & 0xFFF, static_cast<DWORD>(fitted));
}

TEST_F(EntryListTest, AFittedColumnIsNoWiderThanWhatIsStored)
{
    AddEntry(10, std::wstring(3000, L'W'));
    CreateList();
    Paint();
    NMHEADERW click{};
    click.hdr = {Header(), 0, static_cast<UINT>(HDN_DIVIDERDBLCLICKW)};
    click.iItem = 1;
    SendMessageW(m_parent.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    EXPECT_EQ((Stored(L"Column1") >> 12) & 0xFFF, 4095u);
    EXPECT_EQ(Column(1).cx, 4095);
}

LRESULT CALLBACK RefuseColumns(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    return message == LVM_INSERTCOLUMNW && wParam == 1 ? -1
                                                       : DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(EntryListTest, AFailedColumnStopsTheBuilding)
{
    AddEntry(10, L"x");
    CreateList();
    AddEntry(20, L"y");
    SetWindowSubclass(Handle(), RefuseColumns, 1, 0);
    EXPECT_FALSE(m_list.BuildColumns());
    EXPECT_EQ(RowCount(), 1); // no refresh
    EXPECT_EQ(Header_GetItemCount(Header()), 1);
    RemoveWindowSubclass(Handle(), RefuseColumns, 1);
    EXPECT_TRUE(m_list.BuildColumns());
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(Header_GetItemCount(Header()), 2);
}

TEST_F(EntryListTest, CountsWhatPassesTheFilter)
{
    AddEntries(5);
    TestRecord().Time(kPropDate, Instant(2000, 2, 1)).Write();
    CreateList();
    EXPECT_EQ(RowCount(), 6);
    EXPECT_EQ(App().Filter().rowCount, 6u);
    App().Filter().active = true;
    App().Filter().monthMask = 0x1;
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 5);
    EXPECT_EQ(App().Filter().rowCount, 5u);
    App().Filter().monthMask = 0x4;
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 0);
    EXPECT_NE(Notice(), nullptr);
}

TEST_F(EntryListTest, DestroySavesTheColumnsAndDropsTheNotice)
{
    CreateList();
    EXPECT_EQ(Stored(L"iCols"), 0xDEADu);
    ASSERT_NE(Notice(), nullptr);
    m_list.Destroy();
    EXPECT_EQ(Stored(L"iCols"), 2u);
    EXPECT_EQ(Stored(L"Column10"), m_columns.columns[10].GetFlags());
    EXPECT_EQ(Notice(), nullptr);
}

TEST_F(EntryListTest, OutlivesItsWindow)
{
    AddEntry(10, L"x");
    CreateList();
    DestroyWindow(m_parent.Handle());
    EXPECT_EQ(m_list.Handle(), nullptr);
    m_list.Refresh();
    m_list.SelectRecord(1);
    m_list.ClearSelection();
    m_list.Place(0);
    EXPECT_FALSE(m_list.BuildColumns());
}

LRESULT CALLBACK WatchHeader(HWND header, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                             DWORD_PTR images)
{
    if (message == WM_DESTROY)
        *reinterpret_cast<HIMAGELIST*>(images) = Header_GetImageList(header);
    return DefSubclassProc(header, message, wParam, lParam);
}

// The images are the list object's: the control must not free them a second time.
TEST_F(EntryListTest, TheControlGivesItsHeaderImagesBack)
{
    CreateList();
    HIMAGELIST images = Header_GetImageList(Header());
    ASSERT_NE(images, nullptr);
    SetWindowSubclass(Header(), WatchHeader, 1, reinterpret_cast<DWORD_PTR>(&images));
    DestroyWindow(m_parent.Handle());
    EXPECT_EQ(images, nullptr);
}

TEST_F(EntryListTest, MayGoBeforeItsWindow)
{
    auto list = std::make_unique<EntryList>();
    ASSERT_NE(list->Create(m_parent.Handle(), &m_columns, LVS_REPORT, 0), nullptr);
    HWND control = list->Handle();
    list.reset();
    ASSERT_TRUE(IsWindow(control));
    EXPECT_EQ(Header_GetImageList(ListView_GetHeader(control)), nullptr);
    EXPECT_EQ(FindWindowExW(control, nullptr, L"STATIC", nullptr), nullptr);
    RedrawWindow(control, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

TEST_F(EntryListTest, SurvivesAClosedJournal)
{
    const CEOID id = AddEntry(10, L"x");
    CreateList();
    m_list.SelectRecord(id);
    App().Journal().Close();
    Paint();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
}

} // namespace
