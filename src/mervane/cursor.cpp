#include "mervane/cursor.h"

#include "mervane/store.h"

namespace mervane {

Cursor::Cursor(Store& store, TableId table, const SORTORDERSPEC& sort)
    : m_store(store), m_table(table), m_sort(sort)
{}

void Cursor::SetSort(const SORTORDERSPEC& sort)
{
    if (FindProperty(InfoOf(m_table), sort.propid) < 0)
        return;
    m_sort = {sort.propid, sort.dwFlags & CEDB_SORT_DESCENDING};
}

const RowIndex& Cursor::Rows()
{
    m_rows = m_store.RowsOf(m_table, m_sort);
    return *m_rows;
}

CEOID Cursor::Next()
{
    if (!m_current)
        return 0;
    const RowIndex& rows = Rows();
    if (const int row = rows.RowOf(m_current); row >= 0)
        return ToRow(static_cast<uint32_t>(row) + 1);
    // The current record is gone: go on with the first one behind it that is still there.
    const auto walked = m_walked;
    const int old = walked ? walked->RowOf(m_current) : -1;
    for (size_t i = static_cast<size_t>(old) + 1; old >= 0 && i < walked->Count(); ++i)
        if (const int row = rows.RowOf(walked->At(i)); row >= 0)
            return ToRow(static_cast<uint32_t>(row));
    return m_current = 0;
}

CEOID Cursor::ToRow(uint32_t row)
{
    m_current = Rows().At(row);
    m_walked = m_rows;
    return m_current;
}

} // namespace mervane
