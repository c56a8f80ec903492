#include "mervane/db_contacts.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>

#include "mervane/contact_list.h"
#include "mervane/store/store.h"
#include "mervane/values/id_blob.h"

DbContacts::DbContacts() : CeDBase(mervane::TableId::Contacts) {}

DbContacts::~DbContacts() = default;

int DbContacts::Open(CEPROPID key, HWND owner)
{
    return key == kContactsKey ? OpenTable(owner) : 0;
}

int DbContacts::SetAssigned(const CEBLOB& blob, DWORD)
{
    mervane::IdBlob read = mervane::ReadIdBlob(blob);
    m_assigned = std::move(read.ids);
    return read.rightShape ? 1 : 0;
}

int DbContacts::SetBlob(CEBLOB* blob)
{
    return mervane::MakeIdBlob(m_assigned, blob) && !m_assigned.empty() ? 1 : 0;
}

std::wstring_view DbContacts::NameOf(CEOID id)
{
    const Operation operation(*this);
    if (!IsOpen())
        return {};
    const mervane::NameCache& names = SharedStore()->NamesOf(mervane::TableId::Contacts);
    const auto* entry = names.Find(id);
    if (!entry)
        SharedStore()->Note(names.Missing());
    return entry ? std::wstring_view(entry->name) : std::wstring_view();
}

void DbContacts::Assign(CEOID id)
{
    if (id && std::find(m_assigned.begin(), m_assigned.end(), id) == m_assigned.end())
        m_assigned.push_back(id);
}

void DbContacts::Unassign(CEOID id)
{
    std::erase(m_assigned, id);
}

HWND DbContacts::CreateList(HINSTANCE instance, HWND parent, const RECT& rectangle, int id, DWORD style)
{
    const Operation operation(*this);
    m_list = std::make_unique<mervane::ContactList>(*this);
    return m_list->Create(instance, parent, rectangle, id, style);
}

int DbContacts::UpdateList(HWND list)
{
    const Operation operation(*this);
    return m_list && m_list->Update(list) ? 1 : 0;
}

int DbContacts::OnNotify(HWND list, NMHDR* notification, LRESULT* result)
{
    return m_list && m_list->OnNotify(list, notification, result) ? 1 : 0;
}

bool DbContacts::IsAssignmentChange(const NMHDR& notification)
{
    if (notification.code != LVN_ITEMCHANGED)
        return false;
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
    return change.iItem >= 0 && (change.uChanged & LVIF_STATE) && (change.uNewState & LVIS_STATEIMAGEMASK) &&
           (change.uOldState & LVIS_STATEIMAGEMASK) &&
           ((change.uNewState ^ change.uOldState) & LVIS_STATEIMAGEMASK);
}
