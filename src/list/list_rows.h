// The rows that the journal gives the list.
#pragma once

#include "list/filter_state.h"
#include "mervane/db_journal.h"

constexpr DWORD kRowsMax = 65'535; // the count of what passes a filter goes no further than that of all

// The number of rows: of all records, or of those that pass the filter while it is active.
DWORD CountRows(DbJournal& journal, const FilterState& filter);

// Keeps the journal's current record over reads that move it: a paint may come in the middle of somebody's
// walk.
class ScopedPosition {
  public:
    explicit ScopedPosition(DbJournal& journal);
    ~ScopedPosition();
    ScopedPosition(const ScopedPosition&) = delete;
    ScopedPosition& operator=(const ScopedPosition&) = delete;

  private:
    DbJournal& m_journal;
    CEOID m_id = 0;
};
