#include "mervane/contact_list.h"

#include <algorithm>

#include "mervane/list_windows.h"

namespace mervane {

namespace {

constexpr int kTextSize = 260; // as much as a list view shows of a text
constexpr int kPage = 64;      // rows read at once where the list has not said how many it will ask for
constexpr int kMostRead = 1000;

constexpr UINT StateImage(bool checked)
{
    return INDEXTOSTATEIMAGEMASK(checked ? 2u : 1u);
}

bool IsOwnerData(HWND list)
{
    return (GetWindowLongPtrW(list, GWL_STYLE) & LVS_OWNERDATA) != 0;
}

void InsertColumnAcross(HWND list)
{
    RECT client{};
    GetClientRect(list, &client);
    LVCOLUMNW column{};
    column.mask = LVCF_WIDTH;
    column.cx = client.right;
    ListView_InsertColumn(list, 0, &column);
}

// As a list view tells of a check box that it has turned itself.
void TellParent(HWND list, int row, CEOID contact, bool checked)
{
    NMLISTVIEW change{};
    change.hdr = {list, static_cast<UINT_PTR>(GetDlgCtrlID(list)), LVN_ITEMCHANGED};
    change.iItem = row;
    change.uNewState = StateImage(checked);
    change.uOldState = StateImage(!checked);
    change.uChanged = LVIF_STATE;
    change.lParam = static_cast<LPARAM>(contact);
    SendMessageW(GetParent(list), WM_NOTIFY, change.hdr.idFrom, reinterpret_cast<LPARAM>(&change));
}

} // namespace

HWND ContactList::Create(HINSTANCE instance, HWND parent, const RECT& rectangle, int id, DWORD style)
{
    if (m_contacts.RecordCount() || m_contacts.Trouble() != StoreTrouble::None)
        return CreateChildList(instance, parent, rectangle, id, style | LVS_OWNERDATA);
    HWND list = CreateChildList(instance, parent, rectangle, id, style | LVS_NOCOLUMNHEADER);
    if (list)
        InsertColumnAcross(list);
    return list;
}

bool ContactList::Update(HWND list)
{
    if (!IsWindow(list) || !IsOwnerData(list))
        return false;
    const int focused = ListView_GetNextItem(list, -1, LVNI_FOCUSED);
    const CEOID contact = focused >= 0 && focused < RowCount() ? m_rows[static_cast<size_t>(focused)] : 0;
    ReadRows();
    const ListRedrawPause pause(list);
    // In this order: check boxes that are asked for are not set, so nothing is told to be changed.
    ListView_SetCallbackMask(list, LVIS_STATEIMAGEMASK);
    ListView_SetExtendedListViewStyleEx(list, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
    ListView_SetItemCountEx(list, RowCount(), LVSICF_NOSCROLL);
    RestoreFocus(list, contact, std::max(focused, 0));
    return true;
}

void ContactList::ReadRows()
{
    m_rows.clear();
    m_texts.clear();
    const CeDBase::ReadScope scope(m_contacts);
    CEOID id = m_contacts.IdOfRow(0);
    while (id) {
        m_rows.push_back(id);
        id = m_contacts.IdOfRow(static_cast<uint32_t>(m_rows.size()));
    }
}

void ContactList::RestoreFocus(HWND list, CEOID id, int row) const
{
    if (m_rows.empty())
        return;
    const auto found = std::find(m_rows.begin(), m_rows.end(), id);
    const int wanted =
        found != m_rows.end() ? static_cast<int>(found - m_rows.begin()) : std::min(row, RowCount() - 1);
    if (ListView_GetNextItem(list, -1, LVNI_FOCUSED) == wanted)
        return;
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list, wanted, LVIS_FOCUSED, LVIS_FOCUSED);
    ListView_EnsureVisible(list, wanted, FALSE);
}

bool ContactList::OnNotify(HWND list, NMHDR* notification, LRESULT* result)
{
    if (!notification || !list || notification->hwndFrom != list || !IsOwnerData(list))
        return false;
    LRESULT answer = 0;
    switch (notification->code) {
    case LVN_GETDISPINFOW: OnGetDispInfo(reinterpret_cast<NMLVDISPINFOW*>(notification)->item); break;
    case LVN_ODCACHEHINT: {
        const auto& hint = *reinterpret_cast<const NMLVCACHEHINT*>(notification);
        ReadTexts(hint.iFrom, hint.iTo);
        break;
    }
    case LVN_ODFINDITEMW: answer = OnFindItem(*reinterpret_cast<const NMLVFINDITEMW*>(notification)); break;
    case NM_CLICK: OnClick(list, *reinterpret_cast<const NMITEMACTIVATE*>(notification)); break;
    case LVN_KEYDOWN: OnKeyDown(list, reinterpret_cast<const NMLVKEYDOWN*>(notification)->wVKey); break;
    default: return false;
    }
    if (result)
        *result = answer;
    return true;
}

void ContactList::ReadTexts(int from, int to)
{
    from = std::max(from, 0);
    to = std::min({to, RowCount() - 1, from + kMostRead - 1});
    const int held = m_firstText + static_cast<int>(m_texts.size());
    if (to < from || (m_textsHold && from >= m_firstText && to < held))
        return;
    m_texts.clear();
    m_textsHold = true;
    m_firstText = from;
    const CeDBase::ReadScope scope(m_contacts);
    wchar_t text[kTextSize];
    for (int row = from; row <= to; ++row) {
        const CEOID id = m_rows[static_cast<size_t>(row)];
        Texts texts;
        texts.fileAs.assign(text, static_cast<size_t>(m_contacts.GetStr(id, text, kTextSize, kContactsKey)));
        m_textsHold = m_textsHold && !MayPass(m_contacts.Trouble());
        texts.company.assign(text,
                             static_cast<size_t>(m_contacts.GetStr(id, text, kTextSize, kContactCompany)));
        m_textsHold = m_textsHold && !MayPass(m_contacts.Trouble());
        m_texts.push_back(std::move(texts));
    }
}

std::wstring_view ContactList::TextOf(int row, int column)
{
    const int held = m_firstText + static_cast<int>(m_texts.size());
    if (row < m_firstText || row >= held)
        ReadTexts(row, row + kPage - 1);
    const Texts& texts = m_texts[static_cast<size_t>(row - m_firstText)];
    if (column > 1)
        return {};
    return column == 0 ? texts.fileAs : texts.company;
}

bool ContactList::IsAssigned(int row) const
{
    const auto& assigned = m_contacts.Assigned();
    return std::find(assigned.begin(), assigned.end(), m_rows[static_cast<size_t>(row)]) != assigned.end();
}

void ContactList::OnGetDispInfo(LVITEMW& item)
{
    const bool known = item.iItem >= 0 && item.iItem < RowCount();
    if (item.mask & LVIF_TEXT)
        AnswerText(item, known ? TextOf(item.iItem, item.iSubItem) : std::wstring_view());
    if ((item.mask & LVIF_STATE) && (item.stateMask & LVIS_STATEIMAGEMASK) && known)
        item.state = (item.state & ~UINT{LVIS_STATEIMAGEMASK}) | StateImage(IsAssigned(item.iItem));
}

int ContactList::OnFindItem(const NMLVFINDITEMW& wanted)
{
    const CeDBase::ReadScope scope(m_contacts);
    return FindRow(wanted, RowCount(),
                   [this](int row) { return m_contacts.NameOf(m_rows[static_cast<size_t>(row)]); });
}

// On the box or on the name. Above the list and on a box have the same number.
void ContactList::OnClick(HWND list, const NMITEMACTIVATE& click)
{
    LVHITTESTINFO hit{};
    hit.pt = click.ptAction;
    const int row = ListView_HitTest(list, &hit);
    if (row < 0 || row >= RowCount() || (hit.flags != LVHT_ONITEMSTATEICON && hit.flags != LVHT_ONITEMLABEL))
        return;
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    Toggle(list, row);
}

void ContactList::OnKeyDown(HWND list, WORD key)
{
    const int row = ListView_GetNextItem(list, -1, LVNI_FOCUSED);
    if (key == VK_SPACE && GetKeyState(VK_CONTROL) >= 0 && GetKeyState(VK_MENU) >= 0 && row >= 0 &&
        row < RowCount())
        Toggle(list, row);
}

// A contact that another program has deleted is not assigned any more, but it can be taken off. One that may
// be gone, but is not known to be, can be assigned: an identifier whose contact is gone does no harm.
void ContactList::Toggle(HWND list, int row)
{
    const CEOID contact = m_rows[static_cast<size_t>(row)];
    const bool checked = !IsAssigned(row);
    if (checked && m_contacts.RowOf(contact) < 0 && m_contacts.Trouble() == StoreTrouble::None)
        return;
    if (checked)
        m_contacts.Assign(contact);
    else
        m_contacts.Unassign(contact);
    ListView_RedrawItems(list, row, row);
    TellParent(list, row, contact, checked);
}

} // namespace mervane
