#include "editor/contact_view.h"

#include "pick/only_item.h"
#include "res/resource.h"
#include "ui/scoped_quiet.h"
#include "ui/screen/scale.h"

namespace {

constexpr const wchar_t* kNoContacts = L"<No contacts>";
constexpr DWORD kListStyle = WS_TABSTOP | LVS_NOSORTHEADER | LVS_SHOWSELALWAYS | LVS_REPORT;
static_assert(kListStyle == 0x18009);

void AddColumn(HWND list, int index, const wchar_t* title, int width)
{
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(title);
    column.cx = width;
    column.iSubItem = index;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

// The list is one that is asked for its rows, and there are none: its header is left to say why.
void AddColumnAcross(HWND list, const wchar_t* title)
{
    RECT client{};
    GetClientRect(list, &client);
    AddColumn(list, 0, title, static_cast<int>(client.right));
}

} // namespace

bool ContactView::Create(HWND editor, const RECT& rect)
{
    // Whether there are contacts is asked more than once.
    const CeDBase::ReadScope scope(m_record->Contacts());
    m_list = m_record->Contacts().CreateList(GetModuleHandleW(nullptr), editor, rect, IDC_CONTACT_LIST,
                                             kListStyle);
    if (m_list)
        Fill();
    return m_list != nullptr;
}

void ContactView::Destroy()
{
    const ScopedQuiet quiet(m_quiet);
    if (m_list)
        DestroyWindow(m_list);
    m_list = nullptr;
}

void ContactView::Fill()
{
    const ScopedQuiet quiet(m_quiet);
    ListView_SetExtendedListViewStyleEx(m_list, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    const bool isEmpty = m_record->Contacts().RecordCount() == 0;
    m_isUnread = isEmpty && m_record->Contacts().Trouble() != StoreTrouble::None;
    if (m_isUnread)
        return AddColumnAcross(m_list, kUnreadContacts);
    if (isEmpty)
        return ShowOnlyItem(m_list, kNoContacts);
    AddColumn(m_list, 0, L"File As", Scale(m_list, 145));
    AddColumn(m_list, 1, L"Company", Scale(m_list, 143));
    m_record->Contacts().UpdateList(m_list);
}

bool ContactView::Refresh()
{
    const ScopedQuiet quiet(m_quiet);
    const bool isPlaceholder = !(GetWindowLongPtrW(m_list, GWL_STYLE) & LVS_OWNERDATA);
    const bool isEmpty = m_record->Contacts().RecordCount() == 0;
    if (isEmpty && m_record->Contacts().Trouble() != StoreTrouble::None)
        return true;
    if (m_isUnread || isPlaceholder != isEmpty)
        return false;
    return isPlaceholder || m_record->Contacts().UpdateList(m_list);
}

bool ContactView::OnNotify(NMHDR* notification, LRESULT* result)
{
    return !m_record->Contacts().OnNotify(m_list, notification, result) && !*m_quiet &&
           DbContacts::IsAssignmentChange(*notification);
}
