// The rows that the journal gives the list.
#pragma once

#include <optional>

#include "data/filter_state.h"
#include "filter/passes_filter.h"
#include "mervane/db_journal.h"

constexpr DWORD kRowsMax = 65'535; // the count of what passes a filter goes no further than that of all

// Keeps what passes the filter first in the journal's rows, so that a row of the list and a row of the
// journal are the same.
class FilteredRows {
  public:
    // Looks whether the filter is another one; the records are tested only then.
    void Apply(DbJournal& journal, const FilterState& filter);

  private:
    // What was given to the journal last, and the stamp it got there.
    std::optional<FilterTest> m_test;
    uint32_t m_stamp = 0;
};

// The number of rows: of all records, or of those that pass the filter that the journal's rows are under.
DWORD CountRows(DbJournal& journal);

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
