// The list's columns: headers, widths and the sort.
#include "support/entry_list_fixture.h"
#include "ui/screen/work_area.h"

namespace {

TEST_F(EntryListTest, PriorityIsAnIconInTheFirstColumnOnly)
{
    TestRecord().Time(kPropDate, Instant(2000, 1, 3)).Short(kPropPriority, 2).Write();
    TestRecord().Time(kPropDate, Instant(2000, 1, 2)).Short(kPropPriority, 0).Write();
    TestRecord().Time(kPropDate, Instant(2000, 1, 1)).Write();
    Own().SetNumber(kSettings, L"iCols", 2);
    Own().SetNumber(kSettings, L"Column0", 0x6B01000D);
    Own().SetNumber(kSettings, L"Column1", 0x6506401D);
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
    EXPECT_EQ(ImageOf(0, 1), 2);
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
    m_list.ApplySort(m_columns.columns[1]);
    EXPECT_EQ(m_cursorWhileEmptying, LoadCursorW(nullptr, IDC_WAIT));
    EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT)) << "none, or that of what is below the mouse";
    SetCursor(before);
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
    Own().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropSubject);
    EXPECT_EQ(sort.dwFlags, CEDB_SORT_DESCENDING);
    EXPECT_EQ(Cell(0, 1), L"b");
    EXPECT_EQ(Column(1).iImage, kHeaderImageDescending);
    EXPECT_EQ(Column(0).iImage, 0);
    EXPECT_EQ(Stored(L"Column0") & kColumnSort, 0u);
    EXPECT_EQ(Stored(L"Column1") & kColumnSort, kColumnSort);
}

using HeaderImages = std::vector<std::tuple<WPARAM, UINT, int>>; // column, mask, image

LRESULT CALLBACK WatchHeaderImages(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                   DWORD_PTR images)
{
    if (message == LVM_SETCOLUMNW) {
        const auto& column = *reinterpret_cast<LVCOLUMNW*>(lParam);
        reinterpret_cast<HeaderImages*>(images)->emplace_back(wParam, column.mask, column.iImage);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(EntryListTest, AClickSetsTheImageOfASortableColumn)
{
    Own().SetNumber(kSettings, L"iCols", 3);
    Own().SetNumber(kSettings, L"Column0", 0x6506401D); // date, the sort column
    Own().SetNumber(kSettings, L"Column1", 0x6606400C); // subject, ascending
    Own().SetNumber(kSettings, L"Column2", 0x67064008); // body
    CreateList();
    HeaderImages images;
    SetWindowSubclass(Handle(), WatchHeaderImages, 1, reinterpret_cast<DWORD_PTR>(&images));
    ClickHeader(1);
    EXPECT_EQ(images, (HeaderImages{{1, LVCF_IMAGE, kHeaderImageAscending}}));
    images.clear();
    ClickHeader(2);
    EXPECT_TRUE(images.empty());
    RemoveWindowSubclass(Handle(), WatchHeaderImages, 1);
}

TEST_F(EntryListTest, ColumnsThatAreNotShownAreNotClicked)
{
    AddEntry(10, L"x");
    CreateList();
    NMLISTVIEW click{};
    click.hdr = {Handle(), 0, static_cast<UINT>(LVN_COLUMNCLICK)};
    NMHEADERW divider{};
    divider.hdr = {Header(), 0, static_cast<UINT>(HDN_DIVIDERDBLCLICKW)};
    for (const int column : {-1, 2, 11, 1000, INT_MIN, INT_MAX}) {
        click.iSubItem = divider.iItem = column;
        m_list.OnNotify(&click.hdr);
        m_list.OnNotify(&divider.hdr);
    }
    SORTORDERSPEC sort{};
    Own().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropDate);
    EXPECT_EQ(sort.dwFlags, CEDB_SORT_DESCENDING);
    EXPECT_EQ(Stored(L"iCols"), 0xDEADu);
}

// One that is not sortable sorts all the same and keeps its mark; the body changes the direction only.
TEST_F(EntryListTest, ColumnsWithoutASortMarkSortAllTheSame)
{
    AddEntry(10, L"b");
    AddEntry(20, L"a");
    Own().SetNumber(kSettings, L"iCols", 3);
    Own().SetNumber(kSettings, L"Column0", 0x6506401D); // date, the sort column
    Own().SetNumber(kSettings, L"Column1", 0x67064008); // body
    Own().SetNumber(kSettings, L"Column2", 0x68064008); // categories
    CreateList();
    SORTORDERSPEC sort{};
    ClickHeader(1);
    Own().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropDate);
    EXPECT_EQ(sort.dwFlags, 0u);
    EXPECT_TRUE(m_columns.columns[0].Has(kColumnSort));
    ClickHeader(2);
    Own().Journal().GetSort(&sort);
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
    Own().SetNumber(kSettings, L"iCols", 1);
    Own().SetNumber(kSettings, L"Column0", 0x6606401C); // subject, ascending
    CreateList();
    Paint();
    EXPECT_EQ(Cell(0), L"a");
    SORTORDERSPEC sort{};
    Own().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropSubject);
}

TEST_F(EntryListTest, AStoredWordMakesThePriorityTheFirstAndTheSortColumn)
{
    TestRecord().Time(kPropDate, Instant(2000, 1, 1)).Short(kPropPriority, 0).Write();
    TestRecord().Time(kPropDate, Instant(2000, 1, 2)).Short(kPropPriority, 2).Write();
    TestRecord().Time(kPropDate, Instant(2000, 1, 3)).Short(kPropPriority, 1).Write();
    Own().SetNumber(kSettings, L"iCols", 3);
    Own().SetNumber(kSettings, L"Column0", 0x6B00A01D);
    Own().SetNumber(kSettings, L"Column1", 0x6506400D);
    Own().SetNumber(kSettings, L"Column2", 0x6606400D);
    CreateList();
    Paint();
    EXPECT_EQ(Header_GetItemCount(Header()), 3);
    EXPECT_EQ(Column(0).cx, 10);
    EXPECT_EQ(Column(0).iImage, 4);
    EXPECT_EQ(Cell(0), L"High");
    EXPECT_EQ(Cell(1), L"Normal");
    EXPECT_EQ(Cell(2), L"Low");
    SORTORDERSPEC sort{};
    Own().Journal().GetSort(&sort);
    EXPECT_EQ(sort.propid, kPropPriority);
    EXPECT_EQ(sort.dwFlags, CEDB_SORT_DESCENDING);
}

TEST_F(EntryListTest, WithoutASortColumnTheJournalKeepsItsSort)
{
    AddEntry(10, L"b");
    Own().SetNumber(kSettings, L"iCols", 1);
    Own().SetNumber(kSettings, L"Column0", 0x6506400C);
    Own().Journal().SetSort({kPropSubject, CEDB_SORT_DESCENDING}, 1);
    CreateList();
    EXPECT_EQ(RowCount(), 1);
    SORTORDERSPEC sort{};
    Own().Journal().GetSort(&sort);
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
    EXPECT_LT(fitted, WorkArea().right / 3);
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

} // namespace
