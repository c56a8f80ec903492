#include "mervane/order/table_index.h"

#include <algorithm>

namespace mervane {

namespace {

// The passing places, then the others, each in the given order.
std::vector<uint32_t> PassingFirst(const RowOrder& plain, const PassingSet& passing)
{
    std::vector<uint32_t> grouped(plain.Count());
    uint32_t next[] = {passing.Count(), 0}; // of the others, of the passing ones
    plain.ForEachPlace([&](uint32_t place) { grouped[next[passing.Passes(place)]++] = place; });
    return grouped;
}

} // namespace

TableIndex::TableIndex(Database& database, TableId table, NameCaches& names)
    : m_info(InfoOf(table)), m_columns(database, table, names)
{}

TableIndex::Passing TableIndex::PassingOf(const std::shared_ptr<const RowFilter>& filter)
{
    return m_passing.Make(filter, m_columns);
}

SortBy TableIndex::SortOf(const SORTORDERSPEC& sort) const
{
    return {FindProperty(m_info, sort.propid), (sort.dwFlags & CEDB_SORT_DESCENDING) != 0};
}

std::shared_ptr<const RowOrder> TableIndex::PlainOrderOf(const SortBy& sort)
{
    if (auto order = m_orders.Plain(sort))
        return m_lastOrder = order;
    m_lastOrder = std::make_shared<RowOrder>(m_columns.Sorted(sort.property, sort.descending));
    m_orders.Add(sort, m_lastOrder);
    return m_lastOrder;
}

std::shared_ptr<const RowOrder> TableIndex::OrderOf(const SORTORDERSPEC& wanted, const Passing& passing)
{
    const SortBy sort = SortOf(wanted);
    const auto plain = PlainOrderOf(sort);
    if (!passing)
        return plain;
    const auto order = std::make_shared<RowOrder>(PassingFirst(*plain, *passing));
    m_orders.Add(sort, order, passing);
    return order;
}

bool TableIndex::IsOrderOf(const SORTORDERSPEC& sort, const RowOrder* order) const
{
    return m_orders.IsKnown(SortOf(sort), order);
}

uint32_t TableIndex::PlaceOf(CEOID id)
{
    return m_columns.AreRecordsLoaded() ? m_columns.Records().Find(id) : kNoPlace;
}

bool TableIndex::IsBefore(const KnownOrders::Known& order, uint32_t a, uint32_t b)
{
    if (order.groups && order.groups->Passes(a) != order.groups->Passes(b))
        return order.groups->Passes(a);
    return m_columns.IsBefore(order.sort.property, order.sort.descending, a, b);
}

template <typename Action> void TableIndex::ForEachOrder(Action action)
{
    m_orders.ForEach(
        [this](const KnownOrders::Known& known) { return m_columns.CanCompare(known.sort.property); },
        action);
}

void TableIndex::InsertInto(const KnownOrders::Known& known, RowOrder& order, uint32_t place)
{
    order.Insert(place, [&](uint32_t other) { return IsBefore(known, other, place); });
}

bool TableIndex::Inserted(CEOID id, const RecordValues& values)
{
    if (!m_columns.AreRecordsLoaded())
        return true;
    const uint32_t place = m_columns.Append(id, values);
    if (place == kNoPlace)
        return false;
    m_passing.Inserted(place, m_columns);
    ForEachOrder([&](const KnownOrders::Known& known, RowOrder& order) { InsertInto(known, order, place); });
    return true;
}

void TableIndex::Updated(CEOID id, const RecordValues& values)
{
    const uint32_t place = PlaceOf(id);
    if (place == kNoPlace)
        return;
    m_columns.Update(place, values);
    const std::vector<const PassingSet*> moved = m_passing.Updated(place, values, m_info, m_columns);
    ForEachOrder([&](const KnownOrders::Known& known, RowOrder& order) {
        const bool moves = std::find(moved.begin(), moved.end(), known.groups) != moved.end();
        if (!moves && !values.Changes(known.sort.property))
            return;
        order.Remove(place);
        InsertInto(known, order, place);
    });
}

void TableIndex::Removed(CEOID id)
{
    const uint32_t place = PlaceOf(id);
    if (place == kNoPlace)
        return;
    m_columns.Remove(place);
    m_passing.Removed(place);
    ForEachOrder([place](const KnownOrders::Known&, RowOrder& order) { order.Remove(place); });
}

void TableIndex::NamesChanged(TableId referred)
{
    for (int property = 0; property < static_cast<int>(m_info.properties.size()); ++property)
        if (ReferredTable(m_info.properties[static_cast<size_t>(property)].id) == referred) {
            m_columns.DropKeys(property);
            m_orders.Drop(property);
        }
}

} // namespace mervane
