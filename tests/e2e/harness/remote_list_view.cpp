#include "e2e/harness/remote_list_view.h"

#include <commctrl.h>

#include "e2e/harness/remote_window.h"

namespace {

constexpr int kTextSize = 1024;     // characters
constexpr size_t kTextOffset = 256; // behind any descriptor
constexpr size_t kBlockSize = kTextOffset + kTextSize * sizeof(wchar_t);
static_assert(sizeof(LVITEMW) <= kTextOffset && sizeof(LVCOLUMNW) <= kTextOffset);

POINT OnScreen(HWND window, POINT point)
{
    ClientToScreen(window, &point);
    return point;
}

} // namespace

RemoteListView::RemoteListView(HWND list)
    : m_list(list), m_process(ProcessOf(list)), m_block(m_process.get(), kBlockSize)
{}

int RemoteListView::RowCount() const
{
    return static_cast<int>(Send(m_list, LVM_GETITEMCOUNT));
}

HWND RemoteListView::Header() const
{
    return reinterpret_cast<HWND>(Send(m_list, LVM_GETHEADER));
}

int RemoteListView::ColumnCount() const
{
    return static_cast<int>(Send(Header(), HDM_GETITEMCOUNT));
}

int RemoteListView::ColumnWidth(int column) const
{
    return static_cast<int>(Send(m_list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

wchar_t* RemoteListView::RemoteText() const
{
    return reinterpret_cast<wchar_t*>(static_cast<char*>(m_block.Address()) + kTextOffset);
}

std::wstring RemoteListView::ReadText() const
{
    wchar_t text[kTextSize] = {};
    m_block.Read(text, sizeof text - sizeof(wchar_t), kTextOffset);
    return text;
}

std::wstring RemoteListView::ColumnTitle(int column) const
{
    LVCOLUMNW wanted{};
    wanted.mask = LVCF_TEXT;
    wanted.pszText = RemoteText();
    wanted.cchTextMax = kTextSize;
    if (!m_block.Write(wanted) ||
        !Send(m_list, LVM_GETCOLUMNW, static_cast<WPARAM>(column), m_block.AsLParam()))
        return {};
    return ReadText();
}

std::wstring RemoteListView::Text(int row, int column) const
{
    LVITEMW wanted{};
    wanted.iSubItem = column;
    wanted.pszText = RemoteText();
    wanted.cchTextMax = kTextSize;
    if (!m_block.Write(wanted) || !m_block.Write(L'\0', kTextOffset))
        return {};
    Send(m_list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), m_block.AsLParam());
    return ReadText();
}

std::vector<std::wstring> RemoteListView::Row(int row) const
{
    std::vector<std::wstring> cells;
    const int columns = ColumnCount();
    for (int column = 0; column < columns; ++column)
        cells.push_back(Text(row, column));
    return cells;
}

int RemoteListView::FindRow(int column, const std::wstring& text) const
{
    const int rows = RowCount();
    for (int row = 0; row < rows; ++row)
        if (Text(row, column) == text)
            return row;
    return -1;
}

std::vector<int> RemoteListView::SelectedRows() const
{
    std::vector<int> rows;
    for (LRESULT row = -1;
         (row = Send(m_list, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED, -1)) >= 0;)
        rows.push_back(static_cast<int>(row));
    return rows;
}

int RemoteListView::FocusedRow() const
{
    return static_cast<int>(Send(m_list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED, -1));
}

int RemoteListView::TopRow() const
{
    return static_cast<int>(Send(m_list, LVM_GETTOPINDEX));
}

UINT RemoteListView::State(int row, UINT mask) const
{
    return static_cast<UINT>(
        Send(m_list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), static_cast<LPARAM>(mask)));
}

int RemoteListView::CheckImage(int row) const
{
    return static_cast<int>(State(row, LVIS_STATEIMAGEMASK) >> 12);
}

RECT RemoteListView::ItemRect(int row, int part) const
{
    Send(m_list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    RECT rect{};
    rect.left = part;
    if (!m_block.Write(rect) || !Send(m_list, LVM_GETITEMRECT, static_cast<WPARAM>(row), m_block.AsLParam()))
        return {};
    return m_block.Read<RECT>();
}

POINT RemoteListView::LabelPoint(int row) const
{
    const RECT rect = ItemRect(row, LVIR_LABEL);
    return OnScreen(m_list, {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
}

// The state image lies left of the icon, or of the label where there is none.
POINT RemoteListView::CheckPoint(int row) const
{
    const RECT bounds = ItemRect(row, LVIR_BOUNDS);
    const RECT icon = ItemRect(row, LVIR_ICON);
    return OnScreen(m_list, {(bounds.left + icon.left) / 2, (icon.top + icon.bottom) / 2});
}

POINT RemoteListView::HeaderPoint(int column) const
{
    if (!Send(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(column), m_block.AsLParam()))
        return {};
    const RECT rect = m_block.Read<RECT>();
    return OnScreen(Header(), {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
}
