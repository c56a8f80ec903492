#include "list/list_rows.h"

#include <algorithm>
#include <utility>

#include "data/journal_entry.h"
#include "util/owners.h"

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

ScopedPosition::ScopedPosition(DbJournal& journal) : m_journal(journal)
{
    WORD count = 1;
    CEPROPVAL* properties = nullptr;
    m_id = journal.ReadRecord(&count, &kPropKind, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
}

ScopedPosition::~ScopedPosition()
{
    if (m_id)
        (void)m_journal.SeekRecord(m_id);
}
