// DbJournal: the journal itself.
#pragma once

#include <string>

#include "mervane/ce_dbase.h"

class DbJournal : public CeDBase {
  public:
    DbJournal();

    // Opens the journal in the given sort; a property that cannot be sorted by, or 0, gives the date. owner
    // gets the change notifications. Non-zero on success. A file that is no store, or a newer program's, is
    // refused and stays byte for byte as it was.
    [[nodiscard]] int Open(HWND owner, const SORTORDERSPEC& sort = {});

    // The record's subject, owned by this object and valid until the next call; empty when there is none.
    const wchar_t* GetSubject(CEOID id);

  private:
    std::wstring m_subject;
};
