#include "list/entry_list.h"

#include <algorithm>
#include <utility>

#include "columns/list_columns.h"
#include "list/list_place.h"
#include "list/list_rows.h"
#include "res/resource.h"
#include "ui/hourglass.h"
#include "ui/pictures/canvas.h"
#include "ui/pictures/image_list.h"
#include "ui/scoped_quiet.h"
#include "ui/screen/message_font.h"
#include "ui/screen/scale.h"
#include "ui/screen/work_area.h"

namespace {

constexpr int kImageWidth = 12;
constexpr int kHeaderImagesType = 3; // the handheld's; other systems ignore it or keep it apart

} // namespace

EntryList::EntryList(const Session& session)
    : m_session(session), m_cache(session.journal, m_rowCount),
      m_selection(session.journal, m_rowCount, m_cache)
{}

EntryList::~EntryList()
{
    if (m_list)
        DropHeaderImages();
}

HWND EntryList::Create(HWND parent, ColumnSet* columns, DWORD style, int topOffset)
{
    if (!IsWindow(parent))
        return nullptr;
    m_parent = parent;
    m_list =
        CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_OWNERDATA | style, 0, 0, 0, 0,
                        parent, reinterpret_cast<HMENU>(IDC_ENTRY_LIST), GetModuleHandleW(nullptr), nullptr);
    if (!m_list || !m_hook.Attach(m_list, HandleListMessage, this))
        return nullptr;
    m_selection.Attach(m_list);
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    ListView_SetExtendedListViewStyleEx(m_list, kStyle, kStyle);
    m_font = FitControlFont(m_list);
    SetImages();
    m_columns = columns;
    m_cache.SetColumns(columns);
    LoadColumns(columns, m_session.settings, WorkArea().right);
    (void)InsertColumns(m_list, *columns);
    Place(topOffset);
    const int sort = GetSortColumn(*columns);
    if (sort >= 0)
        ApplySort(ColumnAt(sort));
    else
        Refresh();
    MeasureRows();
    return m_list;
}

// The control measures its rows when it first draws them and lays out its scroll bars again after that. It
// draws into nothing here, so that they are not painted twice in front of the user.
void EntryList::MeasureRows()
{
    const Canvas nothing(1, 1, RGB(255, 255, 255));
    SendMessageW(m_list, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(nothing.Dc()), PRF_CLIENT);
}

// The control takes over the small images and hands them to the header as well; the header gets its own after
// that.
void EntryList::SetImages()
{
    HINSTANCE instance = GetModuleHandleW(nullptr);
    UniqueImageList images =
        LoadImageStrip(instance, IDB_LIST_IMAGES, kImageWidth, kImageMask, DpiOf(m_list));
    // A number beyond the images shows no image and costs nothing to draw; a blank image would cost time in
    // every row.
    ImageList_SetImageCount(images.get(), kImageBlank);
    const UniqueImageList before(ListView_SetImageList(m_list, images.release(), LVSIL_SMALL));
    UniqueImageList headerImages =
        LoadImageStrip(instance, IDB_HEADER_IMAGES, kImageWidth, kImageMask, DpiOf(m_list));
    ListView_SetImageList(m_list, headerImages.get(), kHeaderImagesType);
    Header_SetImageList(ListView_GetHeader(m_list), headerImages.get());
    m_headerImages = std::move(headerImages);
}

void EntryList::SetWidths()
{
    for (int position = 0; m_columns && position < m_columns->shownCount; ++position)
        ListView_SetColumnWidth(m_list, position, SeenWidth(m_list, ColumnAt(position).Width()));
}

void EntryList::OnResolutionChanged()
{
    if (!m_list)
        return;
    UniqueFont font = MakeControlFont(m_list);
    SendMessageW(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    m_font = std::move(font);
    SetImages();
    SetWidths();
    MeasureRows();
    m_notice.SetFont(m_list);
    InvalidateRect(m_list, nullptr, TRUE);
}

void EntryList::DropHeaderImages()
{
    ListView_SetImageList(m_list, nullptr, kHeaderImagesType);
    Header_SetImageList(ListView_GetHeader(m_list), nullptr);
}

void EntryList::Place(int topOffset)
{
    RECT client;
    if (!m_list || !GetClientRect(m_parent, &client))
        return;
    MoveWindow(m_list, client.left, client.top + topOffset, client.right - client.left,
               std::max<int>(client.bottom - client.top - topOffset, 0), TRUE);
    m_notice.Fit(m_list);
}

void EntryList::Destroy()
{
    if (m_columns)
        SaveColumns(*m_columns, m_session.settings);
    m_notice.Hide();
}

LRESULT EntryList::HandleListMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* entryList = static_cast<EntryList*>(self);
    switch (message) {
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<LRESULT>(EmptyNotice::Colors(reinterpret_cast<HDC>(wParam)));
    case WM_DESTROY: entryList->DropHeaderImages(); break;
    case WM_NCDESTROY: entryList->OnListGone(); return 0;
    default: break;
    }
    return entryList->m_hook.Next(message, wParam, lParam);
}

void EntryList::OnListGone()
{
    m_notice.Forget();
    m_selection.Attach(nullptr);
    m_list = nullptr;
    m_parent = nullptr;
}

LRESULT EntryList::OnNotify(NMHDR* notification)
{
    switch (notification->code) {
    case LVN_GETDISPINFOW: OnGetDispInfo(&reinterpret_cast<NMLVDISPINFOW*>(notification)->item); return 0;
    case LVN_ODCACHEHINT: OnCacheHint(*reinterpret_cast<NMLVCACHEHINT*>(notification)); return 0;
    case LVN_ODFINDITEMW: return -1;
    case LVN_DELETEALLITEMS: m_cache.Clear(); return 0;
    case LVN_COLUMNCLICK: OnColumnClick(reinterpret_cast<NMLISTVIEW*>(notification)->iSubItem); return 0;
    case LVN_ITEMCHANGED:
        ReportIf(m_selection.OnItemChanged(*reinterpret_cast<NMLISTVIEW*>(notification)));
        return 0;
    case LVN_ODSTATECHANGED:
        ReportIf(m_selection.OnRangeChanged(*reinterpret_cast<NMLVODSTATECHANGE*>(notification)));
        return 0;
    case NM_DBLCLK: OnDoubleClick(); return 0;
    case HDN_ENDTRACKW: OnEndTrack(*reinterpret_cast<NMHEADERW*>(notification)); return 0;
    case HDN_DIVIDERDBLCLICKW:
        OnDividerDoubleClick(reinterpret_cast<NMHEADERW*>(notification)->iItem);
        return 0;
    default: return 0;
    }
}

void EntryList::OnGetDispInfo(LVITEMW* item)
{
    const DisplayRecord& record = m_cache.Row(item->iItem);
    const WORD property = IsShownColumn(item->iSubItem) ? ColumnAt(item->iSubItem).Property() : WORD{0};
    if (item->mask & LVIF_STATE)
        item->state |= record.state;
    if (item->mask & LVIF_IMAGE)
        item->iImage = CellImage(record, property);
    if (item->mask & LVIF_PARAM)
        item->lParam = static_cast<LPARAM>(record.id);
    if (item->mask & LVIF_TEXT)
        item->pszText = const_cast<wchar_t*>(CellText(record, property)); // the control only reads it
}

// The control may ask for the few rows that have come into sight. Those around them stay within reach of
// whoever asks for their texts, a screen reader for one: a hint on the page is one for the page, cut off rows
// included.
void EntryList::OnCacheHint(const NMLVCACHEHINT& hint)
{
    const int page = ListView_GetCountPerPage(m_list) + 1;
    const int top = ListView_GetTopIndex(m_list);
    const int last = std::min(top + page, static_cast<int>(m_rowCount)) - 1;
    const bool onPage = hint.iFrom <= hint.iTo && hint.iFrom <= last && hint.iTo >= top;
    m_cache.OnHint(onPage ? std::min(hint.iFrom, top) : hint.iFrom,
                   onPage ? std::max(hint.iTo, last) : hint.iTo, page + 1);
}

void EntryList::OnColumnClick(int position)
{
    if (!IsShownColumn(position))
        return;
    const int image = ClickColumn(m_columns, position);
    if (image >= 0) {
        LVCOLUMNW header{};
        header.mask = LVCF_IMAGE;
        header.iImage = image;
        SendMessageW(m_list, LVM_SETCOLUMNW, static_cast<WPARAM>(position),
                     reinterpret_cast<LPARAM>(&header));
    }
    SaveColumns(*m_columns, m_session.settings);
    (void)InsertColumns(m_list, *m_columns);
    ApplySort(ColumnAt(position));
    const int selected = ListView_GetNextItem(m_list, -1, LVNI_SELECTED);
    if (selected >= 0)
        ListView_EnsureVisible(m_list, selected, FALSE);
}

void EntryList::OnDoubleClick()
{
    SendMessageW(m_parent, WM_COMMAND, CMD_EDIT_ENTRY, 0);
}

void EntryList::OnEndTrack(const NMHEADERW& track)
{
    if (IsShownColumn(track.iItem) && track.pitem && (track.pitem->mask & HDI_WIDTH))
        SetColumnWidth(track.iItem, StoredWidth(m_list, track.pitem->cxy));
}

// The control fits the column to its texts, before or after it says so.
void EntryList::OnDividerDoubleClick(int position)
{
    if (!IsShownColumn(position))
        return;
    ListView_SetColumnWidth(m_list, position, LVSCW_AUTOSIZE);
    SetColumnWidth(position, StoredWidth(m_list, ListView_GetColumnWidth(m_list, position)));
    ListView_SetColumnWidth(m_list, position, SeenWidth(m_list, ColumnAt(position).Width()));
}

void EntryList::SetColumnWidth(int position, int width)
{
    ColumnAt(position).SetWidth(width);
    SaveColumns(*m_columns, m_session.settings);
}

bool EntryList::IsShownColumn(int position) const
{
    return m_columns && position >= 0 && position < m_columns->shownCount;
}

ZColumn& EntryList::ColumnAt(int position)
{
    return m_columns->columns[static_cast<size_t>(position)];
}

bool EntryList::BuildColumns()
{
    m_cache.Clear();
    if (!m_list || !InsertColumns(m_list, *m_columns))
        return false;
    Refresh();
    return true;
}

void EntryList::ApplySort(const ZColumn& column)
{
    const ScopedHourglass work;
    DbJournal& journal = m_session.journal;
    SORTORDERSPEC sort{};
    journal.GetSort(&sort);
    journal.SetSort(SortOfColumn(column, sort), 1);
    if (m_list)
        ReportIf(Rebuild(Rows::InAnotherOrder));
}

void EntryList::Refresh()
{
    if (m_list)
        ReportIf(Rebuild(Rows::InTheirOrder));
}

// Emptying the control deselects its rows, which is no change of the selection. Rows that cannot be counted
// are as many as before: a failed read is no empty journal. True when the main window is to be told.
bool EntryList::Rebuild(Rows rows)
{
    const ScopedQuiet quiet(m_selection.Quiet());
    DbJournal& journal = m_session.journal;
    const CeDBase::ReadScope scope(journal);
    const ListPlace place(m_list);
    const uint32_t filter = journal.RowFilterStamp();
    ListView_DeleteAllItems(m_list);
    m_rows.Apply(journal, m_session.filter);
    const DWORD count = CountRows(journal);
    m_isCutShort = journal.Trouble() == StoreTrouble::Damaged;
    if (journal.Trouble() == StoreTrouble::None || count > 0 || !journal.IsOpen())
        m_rowCount = count;
    SendMessageW(m_list, LVM_SETITEMCOUNT, m_rowCount, 0);
    if (rows == Rows::InTheirOrder && journal.RowFilterStamp() == filter)
        place.Restore(m_list);
    m_notice.Show(m_list, m_rowCount == 0);
    return m_selection.SelectAgain();
}

void EntryList::SelectRecord(CEOID id)
{
    if (m_list)
        ReportIf(m_selection.Select(id));
}

void EntryList::ClearSelection()
{
    m_selection.Clear();
    ReportIf(true);
}

void EntryList::SetSelectionFlag(int flag)
{
    m_selection.Tracker().SetFlag(flag);
    ReportIf(true);
}

void EntryList::ReportIf(bool changed)
{
    if (changed)
        SendMessageW(m_parent, kMsgSelectionChanged, static_cast<WPARAM>(SelectionFlag()), 0);
}
