// DbContacts: the contacts that entries refer to, and the set of contacts assigned to one entry.
#pragma once

#include <vector>

#include "mervane/ce_dbase.h"

constexpr CEPROPID kContactCompany = 0x4006001F;

class DbContacts : public CeDBase {
  public:
    DbContacts();

    // key is kContactsKey (the File As text); owner, which may be null, gets the change notifications.
    [[nodiscard]] int Open(CEPROPID key = kContactsKey, HWND owner = nullptr);

    // Takes the assigned set from a blob (flags is always 256). 0 for a blob of a wrong shape, whose valid
    // leading identifiers are taken all the same.
    int SetAssigned(const CEBLOB& blob, DWORD flags);
    // Makes the blob of the assigned set; blob->lpb is a LocalAlloc block that the caller frees, null when
    // the set is empty. Returns 1 when the set is to be written: it is not empty.
    int SetBlob(CEBLOB* blob);

    const std::vector<CEOID>& Assigned() const { return m_assigned; }
    void Assign(CEOID id);   // appends, unless it is there
    void Unassign(CEOID id); // nothing when it is not there

  private:
    std::vector<CEOID> m_assigned;
};
