#include "mervane/db_contacts.h"

#include <algorithm>

#include "mervane/id_blob.h"

DbContacts::DbContacts() : CeDBase(mervane::TableId::Contacts) {}

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

void DbContacts::Assign(CEOID id)
{
    if (id && std::find(m_assigned.begin(), m_assigned.end(), id) == m_assigned.end())
        m_assigned.push_back(id);
}

void DbContacts::Unassign(CEOID id)
{
    std::erase(m_assigned, id);
}
