#include "list/list_rows.h"

#include "data/journal_entry.h"
#include "list/passes_filter.h"
#include "util/owners.h"

namespace {

// A record that cannot be read is passed over.
bool CurrentRecordPasses(DbJournal& journal, const FilterState& filter)
{
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    const CEOID id = journal.ReadRecord(&count, nullptr, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    return id && PassesFilter(filter, count, properties);
}

} // namespace

DWORD CountRows(DbJournal& journal, const FilterState& filter)
{
    if (!filter.active)
        return journal.RecordCount();
    const CeDBase::ReadScope scope(journal);
    const ScopedPosition position(journal);
    DWORD rows = 0;
    for (int more = journal.SeekFirstRecord(); more && rows < kRowsMax; more = journal.SeekNextRecord())
        rows += CurrentRecordPasses(journal, filter);
    return rows;
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
