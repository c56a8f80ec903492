// The window's list: what its rows show, which of them are selected, and its menu.
#include "addrbook/address_window.h"

#include <algorithm>
#include <unordered_set>

#include "addrbook/list_columns.h"
#include "addrbook/resource.h"
#include "addrbook/transfer/count_text.h"
#include "mervane/file/trouble.h"
#include "ui/bars/drop_down.h"

namespace addrbook {

namespace {

constexpr int kEditMenu = 1; // its place in the menu bar

} // namespace

void AddressWindow::MakeList()
{
    m_list = MakeChild(WC_LISTVIEWW, L"",
                       WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                       WS_EX_CLIENTEDGE, IDC_CONTACTS);
    constexpr DWORD kStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    ListView_SetExtendedListViewStyleEx(m_list, kStyle, kStyle);
    InsertColumns(m_list, m_settings);
}

LRESULT AddressWindow::OnNotify(NMHDR* header)
{
    return header->hwndFrom == m_list ? OnListNotify(header) : 0;
}

LRESULT AddressWindow::OnListNotify(NMHDR* header)
{
    switch (header->code) {
    case LVN_GETDISPINFOW: OnDisplay(reinterpret_cast<NMLVDISPINFOW*>(header)); return 0;
    case LVN_ODCACHEHINT: {
        const auto* hint = reinterpret_cast<NMLVCACHEHINT*>(header);
        if (hint->iFrom >= 0 && hint->iTo >= hint->iFrom)
            m_rows.Prepare(static_cast<size_t>(hint->iFrom), static_cast<size_t>(hint->iTo));
        return 0;
    }
    case LVN_ODFINDITEMW: {
        const auto* find = reinterpret_cast<NMLVFINDITEMW*>(header);
        const bool isText = (find->lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) != 0 && find->lvfi.psz;
        return isText ? m_rows.FindName(find->lvfi.psz, static_cast<size_t>(std::max(find->iStart, 0))) : -1;
    }
    case NM_DBLCLK:
        if (reinterpret_cast<NMITEMACTIVATE*>(header)->iItem >= 0)
            OnCommand(CMD_EDIT_CONTACT, 0);
        return 0;
    case LVN_KEYDOWN:
        if (reinterpret_cast<NMLVKEYDOWN*>(header)->wVKey == VK_DELETE)
            OnCommand(CMD_DELETE_CONTACT, 0);
        return 0;
    default: return 0;
    }
}

// The Edit menu where the mouse is, or, when a key has asked for it, below the current contact.
void AddressWindow::ShowListMenu(POINT point)
{
    if (!IsWindowEnabled(m_window))
        return; // another program asks for it, behind a dialog
    if (point.x == -1 && point.y == -1) {
        RECT place{}, client{};
        GetClientRect(m_list, &client);
        ListView_GetItemRect(m_list, ListView_GetNextItem(m_list, -1, LVNI_FOCUSED), &place, LVIR_LABEL);
        point = {std::clamp(place.left, client.left, client.right),
                 std::clamp(place.bottom, client.top, client.bottom)};
        ClientToScreen(m_list, &point);
        RECT list{};
        GetWindowRect(m_list, &list);
        point = MenuCorner(point, list);
    }
    HMENU menu = GetSubMenu(GetMenu(m_window), kEditMenu);
    (void)TrackMenu(menu, TPM_RIGHTBUTTON, point, m_window);
}

void AddressWindow::OnDisplay(NMLVDISPINFOW* info)
{
    LVITEMW& item = info->item;
    if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0 || item.iItem < 0 || item.iSubItem < 0 ||
        item.iSubItem >= static_cast<int>(kColumnCount))
        return;
    const std::wstring& text =
        m_rows.Text(static_cast<size_t>(item.iItem), static_cast<Column>(item.iSubItem));
    lstrcpynW(item.pszText, text.c_str(), item.cchTextMax);
}

std::vector<CEOID> AddressWindow::Selected() const
{
    std::vector<CEOID> ids;
    for (int row = -1; (row = ListView_GetNextItem(m_list, row, LVNI_SELECTED)) >= 0;)
        ids.push_back(m_rows.IdAt(static_cast<size_t>(row)));
    return ids;
}

CEOID AddressWindow::Focused() const
{
    const int row = ListView_GetNextItem(m_list, -1, LVNI_FOCUSED);
    return row >= 0 ? m_rows.IdAt(static_cast<size_t>(row)) : 0;
}

void AddressWindow::Reload(CEOID current)
{
    if (!m_isLoaded)
        return; // the window was closed behind a dialog
    const int row = std::max(ListView_GetNextItem(m_list, -1, LVNI_FOCUSED), 0);
    std::vector<CEOID> selected = Selected();
    if (current)
        selected = {current};
    const CEOID focused = current ? current : Focused();
    m_rows.Load();
    // What was just saved is seen, whatever was looked for.
    if (current && m_rows.RowOf(current) < 0)
        SetWindowTextW(m_find, L"");
    ShowRows(selected, focused, row);
}

// Of what was selected and is still shown everything stays selected; when nothing is, the current row is. The
// current row is the focused contact's, or, when it is no longer shown, the one given.
void AddressWindow::ShowRows(const std::vector<CEOID>& selected, CEOID focused, int otherwise)
{
    const int count = static_cast<int>(m_rows.Count());
    SetRowState(-1, 0);
    ListView_SetItemCountEx(m_list, count, 0);
    const bool hasSelection = SelectRows(selected);
    if (count > 0) {
        const int found = m_rows.RowOf(focused);
        const int row = found >= 0 ? found : std::min(otherwise, count - 1);
        SetRowState(row, hasSelection ? LVIS_FOCUSED : LVIS_FOCUSED | LVIS_SELECTED);
        ListView_EnsureVisible(m_list, row, FALSE);
    }
    InvalidateRect(m_list, nullptr, FALSE);
    ShowCount();
}

// Those of the contacts that are shown; false when none is.
bool AddressWindow::SelectRows(const std::vector<CEOID>& contacts)
{
    const std::unordered_set<CEOID> wanted(contacts.begin(), contacts.end());
    std::vector<int> rows;
    for (size_t row = 0; row < m_rows.Count() && rows.size() < wanted.size(); ++row)
        if (wanted.count(m_rows.IdAt(row)))
            rows.push_back(static_cast<int>(row));
    // All at once is one message.
    if (rows.size() > 1 && rows.size() == m_rows.Count())
        rows = {-1};
    for (const int row : rows)
        SetRowState(row, LVIS_SELECTED);
    return !rows.empty();
}

// No state at all takes the selection away.
void AddressWindow::SetRowState(int row, UINT state)
{
    LVITEMW item{};
    item.state = state;
    item.stateMask = state ? state : LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(m_list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

void AddressWindow::ShowCount()
{
    std::wstring text = CountText(m_rows.CountOfAll(), L"contact", L"contacts");
    if (m_rows.Count() != m_rows.CountOfAll())
        text = CountText(m_rows.Count(), L"of ", L"of ") + text;
    if (m_rows.Trouble() != StoreTrouble::None)
        text += L". Not all can be read: " + ReasonText(m_rows.Trouble());
    else if (m_contacts.FileTrouble() != StoreTrouble::None)
        text += L". Nothing can be saved: " + ReasonText(m_contacts.FileTrouble());
    SetWindowTextW(m_count, text.c_str());
}

} // namespace addrbook
