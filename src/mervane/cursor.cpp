#include "mervane/cursor.h"

#include <utility>

#include "mervane/store.h"

namespace mervane {

Cursor::Cursor(Store& store, TableId table, const SORTORDERSPEC& sort)
    : m_store(store), m_table(table), m_sort(sort)
{
    m_store.AddCursor(this);
}

Cursor::~Cursor()
{
    m_store.RemoveCursor(this);
}

void Cursor::SetSort(const SORTORDERSPEC& sort)
{
    if (FindProperty(InfoOf(m_table), sort.propid) < 0)
        return;
    m_sort = {sort.propid, sort.dwFlags & CEDB_SORT_DESCENDING};
    m_rowKnown = false;
}

void Cursor::SetCurrent(CEOID id)
{
    m_current = id;
    m_rowKnown = false;
    m_hasLeft = false;
}

// Takes the index and the order that hold now. A walk whose current record other programs have deleted finds
// its way on by the order it came in.
void Cursor::Refresh()
{
    const auto& current = m_store.IndexOf(m_table);
    if (m_index == current && m_index->IsOrderOf(m_sort, m_order.get()))
        return;
    const auto oldIndex = std::exchange(m_index, current);
    const auto oldOrder = std::exchange(m_order, m_index->OrderOf(m_sort));
    m_rowKnown = false;
    if (oldIndex && oldIndex != m_index && oldOrder && m_current)
        FindWayOn(*oldIndex, *oldOrder);
}

void Cursor::FindWayOn(TableIndex& oldIndex, const RowOrder& oldOrder)
{
    const CEOID wanted = m_hasLeft ? m_following : m_current;
    if (!wanted || m_index->Records().Find(wanted) != kNoPlace)
        return;
    m_hasLeft = true;
    m_following = 0;
    const uint32_t place = oldIndex.Records().Find(wanted);
    uint32_t row = place == kNoPlace ? kNoRow : oldOrder.RowOf(place);
    while (row != kNoRow && !m_following && ++row < oldOrder.Count()) {
        const CEOID candidate = oldIndex.Records().IdAt(oldOrder.PlaceAt(row));
        if (m_index->Records().Find(candidate) != kNoPlace)
            m_following = candidate;
    }
}

void Cursor::BeforeLeaving(CEOID id)
{
    if (!m_current || id != (m_hasLeft ? m_following : m_current))
        return;
    const int row = RowOf(id);
    if (row < 0)
        return;
    m_hasLeft = true;
    m_following = At(static_cast<uint32_t>(row) + 1);
}

CEOID Cursor::ToRow(uint32_t row)
{
    SetCurrent(At(row));
    m_row = row;
    m_rowVersion = m_order->Version();
    m_rowKnown = m_current != 0;
    return m_current;
}

CEOID Cursor::Next()
{
    if (!m_current)
        return 0;
    Refresh();
    if (m_hasLeft) {
        SetCurrent(m_following);
        return m_current;
    }
    const bool rowHolds = m_rowKnown && m_rowVersion == m_order->Version();
    const int row = rowHolds ? static_cast<int>(m_row) : RowOf(m_current);
    if (row >= 0)
        return ToRow(static_cast<uint32_t>(row) + 1);
    SetCurrent(0);
    return 0;
}

CEOID Cursor::At(uint32_t row)
{
    Refresh();
    const uint32_t place = m_order->PlaceAt(row);
    return place == kNoPlace ? 0 : m_index->Records().IdAt(place);
}

int Cursor::RowOf(CEOID id)
{
    Refresh();
    const uint32_t place = m_index->Records().Find(id);
    const uint32_t row = place == kNoPlace ? kNoRow : m_order->RowOf(place);
    return row == kNoRow ? -1 : static_cast<int>(row);
}

uint32_t Cursor::Count()
{
    Refresh();
    return m_order->Count();
}

} // namespace mervane
