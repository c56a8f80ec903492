#include "mervane/store/cursor.h"

#include <utility>

#include "mervane/store/store.h"

namespace mervane {

CEOID Cursor::Orders::At(Way way, uint32_t row) const
{
    const uint32_t place = Of(way).PlaceAt(row);
    return place == kNoPlace ? 0 : index->Records().IdAt(place);
}

uint32_t Cursor::Orders::RowOf(Way way, CEOID id) const
{
    const uint32_t place = index->Records().Find(id);
    return place == kNoPlace ? kNoRow : Of(way).RowOf(place);
}

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

void Cursor::SetRowFilter(std::shared_ptr<const RowFilter> filter)
{
    m_filter = std::move(filter);
}

void Cursor::StandOn(CEOID id, Way way)
{
    m_current = id;
    m_way = way;
    m_rowKnown = false;
    m_hasLeft = false;
}

bool Cursor::AreOrdersCurrent() const
{
    if (m_orders.index != m_store.IndexOf(m_table) ||
        m_filter != (m_orders.passing ? m_orders.passing->Filter() : nullptr))
        return false;
    return m_orders.index->IsOrderOf(m_sort, m_orders.sort.get()) &&
           m_orders.index->IsOrderOf(m_sort, m_orders.rows.get());
}

// Takes the index and the orders that hold now. A walk whose current record other programs have deleted finds
// its way on by the order it came in.
void Cursor::Refresh()
{
    if (AreOrdersCurrent())
        return;
    Orders fresh{m_store.IndexOf(m_table), nullptr, nullptr, nullptr};
    if (m_filter) {
        const bool holds =
            m_orders.index == fresh.index && m_orders.passing && m_orders.passing->Filter() == m_filter;
        fresh.passing = holds ? m_orders.passing : fresh.index->PassingOf(m_filter);
    }
    fresh.sort = fresh.index->OrderOf(m_sort);
    fresh.rows = fresh.index->OrderOf(m_sort, fresh.passing);
    const Orders old = std::exchange(m_orders, std::move(fresh));
    m_rowKnown = false;
    if (old.index && old.index != m_orders.index && m_current)
        FindWayOn(old);
}

// Which side of a record its neighbours in the order before lie on now tells whether it has moved itself: as
// after a write of the own, the walk then goes on where it stood.
bool Cursor::HasMoved(CEOID before, CEOID id, CEOID behind) const
{
    const uint32_t row = m_orders.RowOf(m_way, id);
    const bool isAhead = before && m_orders.RowOf(m_way, before) > row;
    const bool isBehind = behind && m_orders.RowOf(m_way, behind) < row;
    const bool doNeighboursFit =
        !before || !behind || m_orders.RowOf(m_way, before) < m_orders.RowOf(m_way, behind);
    return (isAhead || isBehind) && doNeighboursFit;
}

// The nearest record from a row of an order before on, in the walk's direction or against it, that is still
// there.
CEOID Cursor::NearestLeft(const Orders& old, uint32_t row, int step) const
{
    const RecordSet& records = m_orders.index->Records();
    for (row += static_cast<uint32_t>(step); row < old.Of(m_way).Count(); row += static_cast<uint32_t>(step))
        if (const CEOID candidate = old.At(m_way, row); records.Find(candidate) != kNoPlace)
            return candidate;
    return 0;
}

void Cursor::FindWayOn(const Orders& old)
{
    const CEOID wanted = m_hasLeft ? m_following : m_current;
    const uint32_t row = wanted ? old.RowOf(m_way, wanted) : kNoRow;
    const bool isThere = wanted && m_orders.index->Records().Find(wanted) != kNoPlace;
    if (!wanted || (isThere && (m_hasLeft || row == kNoRow)))
        return;
    const CEOID behind = row == kNoRow ? 0 : NearestLeft(old, row, 1);
    if (isThere && !HasMoved(NearestLeft(old, row, -1), wanted, behind))
        return;
    m_hasLeft = true;
    m_following = behind;
}

Cursor::Place Cursor::Stand() const
{
    return {m_orders, m_current, m_way, m_hasLeft, m_following};
}

bool Cursor::StandsOn(const Place& place) const
{
    return m_orders.index == place.orders.index && m_current == place.current && m_way == place.way &&
           m_hasLeft == place.hasLeft && m_following == place.following;
}

void Cursor::StandAgain(const Place& place)
{
    if (StandsOn(place))
        return;
    m_current = place.current;
    m_way = place.way;
    m_hasLeft = place.hasLeft;
    m_following = place.following;
    m_rowKnown = false;
    if (place.orders.index && m_orders.index != place.orders.index && m_current)
        FindWayOn(place.orders);
}

// Whether a write of these values may move a record in the order in which this one walks. Without an order
// yet there is no row to lose.
bool Cursor::MovesWith(const RecordValues& values) const
{
    const TableInfo& table = InfoOf(m_table);
    if (!m_orders.index)
        return false;
    if (values.Changes(FindProperty(table, m_sort.propid)))
        return true;
    return m_way == Way::Rows && m_filter &&
           (m_filter->emptyPasses || values.Changes(FindProperty(table, m_filter->property)));
}

void Cursor::BeforeWrite(CEOID id, const RecordValues* values)
{
    if (!m_current || id != (m_hasLeft ? m_following : m_current) || (values && !MovesWith(*values)))
        return;
    Refresh();
    const uint32_t row = m_orders.RowOf(m_way, id);
    if (row == kNoRow)
        return;
    m_hasLeft = true;
    m_following = m_orders.At(m_way, row + 1);
}

void Cursor::NoteMissing()
{
    m_store.Note(m_orders.index->MissingRecords());
}

CEOID Cursor::MoveTo(uint32_t row, Way way)
{
    Refresh();
    StandOn(m_orders.At(way, row), way);
    if (!m_current)
        NoteMissing();
    m_row = row;
    m_rowVersion = m_orders.Of(way).Version();
    m_rowKnown = m_current != 0;
    return m_current;
}

CEOID Cursor::Next()
{
    if (!m_current)
        return 0;
    Refresh();
    if (m_hasLeft) {
        StandOn(m_following, m_way);
        if (!m_current)
            NoteMissing();
        return m_current;
    }
    const bool rowHolds = m_rowKnown && m_rowVersion == m_orders.Of(m_way).Version();
    const uint32_t row = rowHolds ? m_row : m_orders.RowOf(m_way, m_current);
    if (row != kNoRow)
        return MoveTo(row + 1, m_way);
    StandOn(0, m_way);
    NoteMissing();
    return 0;
}

CEOID Cursor::At(uint32_t row)
{
    Refresh();
    const CEOID id = m_orders.At(Way::Rows, row);
    if (!id)
        NoteMissing();
    return id;
}

// Where records are missing, the table itself may still know that this record is not among them.
int Cursor::RowOf(CEOID id)
{
    Refresh();
    const uint32_t row = m_orders.RowOf(Way::Rows, id);
    if (row != kNoRow)
        return static_cast<int>(row);
    if (m_orders.index->MissingRecords() != StoreTrouble::None &&
        m_store.TableOf(m_table).Exists(id) != Answer::No)
        NoteMissing();
    return -1;
}

uint32_t Cursor::Count()
{
    Refresh();
    NoteMissing();
    return m_orders.sort->Count();
}

uint32_t Cursor::PassingCount()
{
    Refresh();
    NoteMissing();
    m_store.Note(m_orders.index->MissingValues());
    return m_orders.passing ? m_orders.passing->Count() : m_orders.sort->Count();
}

} // namespace mervane
