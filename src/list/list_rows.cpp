#include "list/list_rows.h"

#include <algorithm>
#include <utility>

void FilteredRows::Apply(DbJournal& journal, const FilterState& filter)
{
    if (!filter.active) {
        journal.ClearRowFilter();
        return;
    }
    FilterTest test(filter);
    if (m_stamp && journal.RowFilterStamp() == m_stamp && m_test == test)
        return;
    m_stamp = journal.SetRowFilter(MakeRowFilter(test));
    m_test = std::move(test);
}

DWORD CountRows(DbJournal& journal)
{
    return std::min<DWORD>(journal.PassingRows(), kRowsMax);
}

ScopedPosition::ScopedPosition(DbJournal& journal) : m_journal(journal), m_id(journal.CurrentRecord()) {}

ScopedPosition::~ScopedPosition()
{
    if (m_id)
        (void)m_journal.SeekRecord(m_id);
}
