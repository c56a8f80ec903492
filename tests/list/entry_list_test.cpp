#include <gmock/gmock.h>

#include <memory>

#include "support/entry_list_fixture.h"
#include "support/thread_hook.h"
#include "ui/pictures/canvas.h"
#include "ui/screen/work_area.h"

namespace {

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

TEST_F(EntryListTest, NoListWhereTheControlCannotBeMade)
{
    {
        const WindowRefuser refuser(L"SysListView32");
        EXPECT_EQ(m_list.Create(m_parent.Handle(), &m_columns, LVS_REPORT, 0), nullptr);
    }
    EXPECT_EQ(m_list.Handle(), nullptr);
    m_list.Destroy();
    EXPECT_EQ(Stored(L"iCols"), 0xDEADu);
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
    EXPECT_EQ(ListView_GetExtendedListViewStyle(Handle()), DWORD{LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER})
        << "painted without a flicker";
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

// The pixels of all images of a list that are of a colour when drawn on white.
int CountPixels(HIMAGELIST images, COLORREF color)
{
    int width = 0;
    int height = 0;
    EXPECT_TRUE(ImageList_GetIconSize(images, &width, &height));
    const Canvas canvas(width, height, RGB(255, 255, 255));
    int count = 0;
    for (int i = 0; i < ImageList_GetImageCount(images); ++i) {
        PatBlt(canvas.Dc(), 0, 0, width, height, WHITENESS);
        EXPECT_TRUE(ImageList_Draw(images, i, canvas.Dc(), 0, 0, ILD_NORMAL));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                count += GetPixel(canvas.Dc(), x, y) == color;
    }
    return count;
}

TEST_F(EntryListTest, ItsImagesHaveNoGreyBackground)
{
    CreateList();
    for (HIMAGELIST images : {ListView_GetImageList(Handle(), LVSIL_SMALL), Header_GetImageList(Header())}) {
        EXPECT_EQ(CountPixels(images, RGB(0xC0, 0xC0, 0xC0)), 0);
        EXPECT_GT(CountPixels(images, RGB(0xFF, 0xFF, 0xFF)), 0);
    }
}

std::vector<std::pair<WPARAM, LPARAM>> g_imageLists; // by type, as they are set

LRESULT CALLBACK WatchImageLists(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& sent = *reinterpret_cast<CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && sent.message == LVM_SETIMAGELIST)
        g_imageLists.emplace_back(sent.wParam, sent.lParam);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// The control may ignore one of the types.
TEST_F(EntryListTest, SetsItsImagesByTheirTypes)
{
    g_imageLists.clear();
    const ThreadHook hook(WH_CALLWNDPROC, WatchImageLists);
    CreateList();
    ASSERT_EQ(g_imageLists.size(), 2u);
    EXPECT_EQ(g_imageLists[0].first, WPARAM{1});
    EXPECT_EQ(g_imageLists[0].second, reinterpret_cast<LPARAM>(ListView_GetImageList(Handle(), LVSIL_SMALL)));
    EXPECT_EQ(g_imageLists[1].first, WPARAM{3});
    EXPECT_EQ(g_imageLists[1].second, reinterpret_cast<LPARAM>(Header_GetImageList(Header())));
}

std::vector<UINT> g_firstMessages; // of those that build the list, in order

LRESULT CALLBACK WatchBuilding(int code, WPARAM wParam, LPARAM lParam)
{
    const auto& sent = *reinterpret_cast<CWPSTRUCT*>(lParam);
    bool isStep = sent.message == WM_SIZE && LOWORD(sent.lParam) > 0;
    for (const UINT message : std::initializer_list<UINT>{LVM_SETEXTENDEDLISTVIEWSTYLE, LVM_SETIMAGELIST,
                                                          LVM_INSERTCOLUMNW, LVM_SETITEMCOUNT})
        isStep = isStep || sent.message == message;
    wchar_t name[32] = L"";
    GetClassNameW(sent.hwnd, name, 32);
    if (code == HC_ACTION && isStep && wcscmp(name, WC_LISTVIEWW) == 0 &&
        std::find(g_firstMessages.begin(), g_firstMessages.end(), sent.message) == g_firstMessages.end())
        g_firstMessages.push_back(sent.message);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(EntryListTest, IsBuiltOfStyleImagesColumnsPlaceAndRows)
{
    g_firstMessages.clear();
    const ThreadHook hook(WH_CALLWNDPROC, WatchBuilding);
    CreateList();
    EXPECT_EQ(g_firstMessages, (std::vector<UINT>{LVM_SETEXTENDEDLISTVIEWSTYLE, LVM_SETIMAGELIST,
                                                  LVM_INSERTCOLUMNW, WM_SIZE, LVM_SETITEMCOUNT}));
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
    EXPECT_EQ(Column(0).cx, WorkArea().right / 3);
    EXPECT_EQ(Column(1).cx, 2 * WorkArea().right / 3);
    EXPECT_EQ(Cell(0, 1), L"newer");
    EXPECT_EQ(Cell(1, 1), L"older");
    EXPECT_EQ(Cell(0, 0), L"1/1/2000 12:20 AM");
    EXPECT_EQ(Cell(1, 0), L"1/1/2000 12:10 AM");
    EXPECT_EQ(Cell(0, 2), L"");
    EXPECT_TRUE(m_blankRows.empty());
}

TEST_F(EntryListTest, ItemsCarryTheirRecord)
{
    const CEOID id = AddEntry(10, L"only");
    CreateList();
    Paint();
    LVITEMW asked{};
    asked.state = LVIS_CUT;
    const LVITEMW item = Answer(0, 0, LVIF_PARAM | LVIF_STATE, asked);
    EXPECT_EQ(item.lParam, static_cast<LPARAM>(id));
    EXPECT_EQ(item.state, UINT{LVIS_CUT}) << "the state is added to";
    EXPECT_EQ(Answer(0, 0, LVIF_STATE).lParam, 0) << "only what was asked for";
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
    Own().SetNumber(kSettings, L"iCols", 4);
    Own().SetNumber(kSettings, L"Column0", 0x6B01000C); // priority
    Own().SetNumber(kSettings, L"Column1", 0x66064000); // subject
    Own().SetNumber(kSettings, L"Column2", 0x67064000); // body
    Own().SetNumber(kSettings, L"Column3", 0x6E064000); // duration
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

// Room for whatever a notification holds.
union Notification {
    NMITEMACTIVATE item;
    NMHEADERW track;
    NMHDR header;
};

TEST_F(EntryListTest, OtherNotificationsDoNothing)
{
    AddEntries(3);
    CreateList();
    ClickRow(1);
    const std::vector<CEOID> selected = Selected();
    const int width = m_columns.columns[0].Width();
    m_reports.clear();
    for (const UINT code :
         {NM_CLICK, NM_RCLICK, NM_RDBLCLK, NM_RETURN, NM_SETFOCUS, NM_KILLFOCUS, NM_HOVER, LVN_ITEMCHANGING,
          LVN_INSERTITEM, LVN_DELETEITEM, LVN_BEGINLABELEDITW, LVN_ENDLABELEDITW, LVN_BEGINDRAG,
          LVN_BEGINRDRAG, LVN_ITEMACTIVATE, LVN_KEYDOWN, LVN_MARQUEEBEGIN}) {
        Notification notification{};
        notification.item.uOldState = LVIS_SELECTED;
        notification.item.uChanged = LVIF_STATE;
        notification.header = {Handle(), 0, code};
        EXPECT_EQ(m_list.OnNotify(&notification.header), 0) << code;
    }
    HDITEMW item{};
    item.mask = HDI_WIDTH;
    item.cxy = 33;
    for (const UINT code : {HDN_ITEMCLICKW, HDN_ITEMDBLCLICKW, HDN_BEGINTRACKW, HDN_TRACKW, HDN_ITEMCHANGINGW,
                            HDN_ITEMCHANGEDW, HDN_BEGINDRAG, HDN_ENDDRAG, HDN_ENDTRACKA}) {
        Notification notification{};
        notification.track.pitem = &item;
        notification.header = {Header(), 0, code};
        EXPECT_EQ(m_list.OnNotify(&notification.header), 0) << code;
    }
    EXPECT_TRUE(m_reports.empty());
    EXPECT_TRUE(m_commands.empty());
    EXPECT_EQ(Selected(), selected);
    EXPECT_EQ(m_columns.columns[0].Width(), width);
    EXPECT_EQ(Stored(L"iCols"), 0xDEADu);
}

TEST_F(EntryListTest, ADoubleClickBelowTheRowsEditsToo)
{
    AddEntry(10, L"only");
    CreateList();
    Paint();
    RECT client{};
    GetClientRect(Handle(), &client);
    const LPARAM below = MAKELPARAM(20, client.bottom - 10);
    PostMessageW(Handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, below);
    PostMessageW(Handle(), WM_LBUTTONUP, 0, below);
    PumpMessages();
    EXPECT_EQ(m_commands, std::vector<WPARAM>{101});
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

TEST_F(EntryListTest, CountsWhatPassesTheFilter)
{
    AddEntries(5);
    TestRecord().Time(kPropDate, Instant(2000, 2, 1)).Write();
    CreateList();
    EXPECT_EQ(RowCount(), 6);
    EXPECT_EQ(m_list.RowCount(), 6u);
    Own().Filter().active = true;
    Own().Filter().monthMask = 0x1;
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 5);
    EXPECT_EQ(m_list.RowCount(), 5u);
    Own().Filter().monthMask = 0x4;
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
    auto list = std::make_unique<EntryList>(Own());
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
    Own().Journal().Close();
    Paint();
    m_list.Refresh();
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(m_list.CurrentEntry(), 0u);
}

} // namespace
