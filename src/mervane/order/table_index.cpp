#include "mervane/order/table_index.h"

#include <algorithm>
#include <utility>

#include "mervane/order/place_sort.h"

namespace mervane {

namespace {

constexpr size_t kMiB = 1024 * 1024;
// How much of each table's sort keys is kept, and how long a key may at least be.
constexpr size_t kKeyBytes[kTableCount] = {8 * kMiB, kMiB, kMiB};
constexpr size_t kShortestLimit = 8;

size_t KeyLimit(TableId table, uint32_t places)
{
    const size_t share = kKeyBytes[IndexOf(table)] / std::max<uint32_t>(places, 1);
    return std::max(kShortestLimit, share < 16 ? 0 : share - 8);
}

bool IsDescending(const SORTORDERSPEC& sort)
{
    return (sort.dwFlags & CEDB_SORT_DESCENDING) != 0;
}

} // namespace

TableIndex::TableIndex(Database& database, TableId table, NameCaches& names)
    : m_database(database), m_table(table), m_info(InfoOf(table)), m_names(names),
      m_emptyTest(database, m_info)
{}

bool TableIndex::IsNumber(int property) const
{
    const WORD type = PropertyType(PropertyAt(property).id);
    return type != CEVT_LPWSTR && type != CEVT_BLOB;
}

const RecordSet& TableIndex::Records()
{
    if (!m_loaded)
        LoadRecords();
    return m_records;
}

// The records come with the property that the table is usually sorted by, when that is a number: an index of
// the file has both, so that a start reads nothing else, and most likely in its order.
void TableIndex::LoadRecords()
{
    const int property = FindProperty(m_info, m_info.defaultSort);
    const bool withNumber = IsNumber(property);
    std::vector<CEOID> ids;
    std::vector<std::optional<int64_t>> numbers;
    m_missingRecords = ScanTable(m_database, m_info.name, withNumber ? PropertyAt(property).column : "",
                                 [&](CEOID id, const Statement& row) {
                                     ids.push_back(id);
                                     if (withNumber)
                                         numbers.push_back(row.Integer(1));
                                 });
    m_records = RecordSet(SortedIds(ids));
    m_loaded = true;
    if (!withNumber)
        return;
    NumberColumn& column = m_numbers.try_emplace(property, PropertyAt(property)).first->second;
    column.Resize(m_records.PlaceCount());
    m_scanOrder.reserve(ids.size());
    const PlaceFinder finder(m_records);
    for (size_t row = 0; row < ids.size(); ++row) {
        m_scanOrder.push_back(finder.Find(ids[row]));
        column.Set(m_scanOrder.back(), numbers[row]);
    }
}

// The columns of the row are the identifier and the property.
void TableIndex::ScanValues(int property, const OnScannedRow& onRow)
{
    NoteMissingValues(ScanTable(m_database, m_info.name, PropertyAt(property).column, onRow));
}

// What may pass counts more: it is tried again.
void TableIndex::NoteMissingValues(StoreTrouble missing)
{
    if (missing != StoreTrouble::None && !MayPass(m_missingValues))
        m_missingValues = missing;
}

// Of the names that the property's keys are made of.
void TableIndex::NoteMissingNames(int property)
{
    if (const auto referred = ReferredTable(PropertyAt(property).id))
        NoteMissingValues(m_names.Of(*referred).Missing());
}

std::string TableIndex::WholeKey(Keys& keys, uint32_t place)
{
    return ReadValue([&] { return std::string(keys.source.ReadKey(m_records.IdAt(place)).value_or("")); });
}

void TableIndex::LoadNumbers(int property)
{
    NumberColumn& column = m_numbers.try_emplace(property, PropertyAt(property)).first->second;
    column.Resize(m_records.PlaceCount());
    const PlaceFinder finder(m_records);
    ScanValues(property, [&](CEOID id, const Statement& row) {
        if (const uint32_t place = finder.Find(id); place != kNoPlace)
            column.Set(place, row.Integer(1));
    });
}

void TableIndex::LoadKeys(int property)
{
    const uint32_t places = m_records.PlaceCount();
    Keys& keys = m_keys
                     .try_emplace(property, m_database, m_info, PropertyAt(property), m_names, places,
                                  KeyLimit(m_table, places))
                     .first->second;
    uint32_t next = 0;
    ScanValues(property, [&](CEOID id, const Statement& row) {
        const uint32_t place = m_records.FindFrom(id, &next);
        if (place == kNoPlace)
            return;
        keys.column.Set(place, keys.source.KeyOfCell(row, 1));
        KeepWithinLimit(property);
    });
    NoteMissingNames(property);
}

// Drops the kept keys that were not used for the longest time, except those of the given property.
void TableIndex::KeepWithinLimit(int property)
{
    for (;;) {
        size_t bytes = 0;
        auto oldest = m_keys.end();
        for (auto at = m_keys.begin(); at != m_keys.end(); ++at) {
            bytes += at->second.column.Bytes();
            if (at->first != property &&
                (oldest == m_keys.end() || at->second.lastUse < oldest->second.lastUse))
                oldest = at;
        }
        if (bytes <= kKeyBytes[IndexOf(m_table)] || oldest == m_keys.end())
            return;
        m_keys.erase(oldest);
    }
}

// What was read when there were few records keeps long keys. When many have come it is better read again.
void TableIndex::DropGrownKeys()
{
    std::erase_if(m_keys, [this](const auto& keys) {
        return keys.second.column.Bytes() > kKeyBytes[IndexOf(m_table)] * 3 / 2;
    });
}

bool TableIndex::HasColumn(int property) const
{
    return m_numbers.contains(property) || m_keys.contains(property);
}

std::shared_ptr<RowOrder> TableIndex::MakeOrder(int property, bool descending)
{
    Records();
    if (!HasColumn(property)) {
        if (IsNumber(property))
            LoadNumbers(property);
        else
            LoadKeys(property);
    }
    if (IsNumber(property))
        return std::make_shared<RowOrder>(
            SortPlaces(m_records, m_numbers.at(property), descending, std::exchange(m_scanOrder, {})));
    Keys& keys = m_keys.at(property);
    return std::make_shared<RowOrder>(SortPlaces(m_records, keys.column, descending,
                                                 [&](uint32_t place) { return WholeKey(keys, place); }));
}

void TableIndex::Remember(const KnownOrder& known)
{
    std::erase_if(m_orders, [](const KnownOrder& other) { return !other.IsAlive(); });
    m_orders.push_back(known);
}

std::shared_ptr<const RowOrder> TableIndex::PlainOrderOf(int property, bool descending)
{
    for (const KnownOrder& known : m_orders)
        if (known.property == property && known.descending == descending && !known.groups)
            if (auto order = known.order.lock()) {
                m_lastOrder = order;
                return order;
            }
    m_lastOrder = MakeOrder(property, descending);
    Remember({property, descending, m_lastOrder.get(), m_lastOrder});
    if (const auto keys = m_keys.find(property); keys != m_keys.end())
        keys->second.lastUse = ++m_useCount;
    return m_lastOrder;
}

bool TableIndex::IsOrderOf(const SORTORDERSPEC& sort, const RowOrder* order) const
{
    const int property = FindProperty(m_info, sort.propid);
    const bool descending = IsDescending(sort);
    return std::any_of(m_orders.begin(), m_orders.end(), [&](const KnownOrder& known) {
        return known.address == order && known.property == property && known.descending == descending;
    });
}

// Acts on the orders that are in use and whose property is there to compare by; the others are given up.
template <typename Action> void TableIndex::ForEachOrder(Action action)
{
    std::erase_if(m_orders, [&](const KnownOrder& known) {
        const auto order = known.order.lock();
        const auto passing = known.passing.lock();
        if (!order || passing.get() != known.groups || !HasColumn(known.property))
            return true;
        action(known, *order);
        return false;
    });
}

bool TableIndex::IsKeyBefore(const KnownOrder& order, uint32_t a, uint32_t b)
{
    Keys& keys = m_keys.at(order.property);
    auto result = keys.column.Compare(a, b);
    if (!result)
        result = WholeKey(keys, a).compare(WholeKey(keys, b));
    return *result ? (*result < 0) != order.descending : a < b;
}

bool TableIndex::IsBefore(const KnownOrder& order, uint32_t a, uint32_t b)
{
    if (order.groups && order.groups->Passes(a) != order.groups->Passes(b))
        return order.groups->Passes(a);
    return IsSortedBefore(order, a, b);
}

bool TableIndex::IsSortedBefore(const KnownOrder& order, uint32_t a, uint32_t b)
{
    const auto numbers = m_numbers.find(order.property);
    const bool isNumber = numbers != m_numbers.end();
    const auto isMissing = [&](uint32_t place) {
        return isNumber ? numbers->second.IsMissing(place)
                        : m_keys.at(order.property).column.IsMissing(place);
    };
    const bool aMissing = isMissing(a), bMissing = isMissing(b);
    if (aMissing || bMissing)
        return aMissing == bMissing ? a < b : bMissing;
    if (!isNumber)
        return IsKeyBefore(order, a, b);
    const uint64_t aKey = numbers->second.Key(a), bKey = numbers->second.Key(b);
    return aKey != bKey ? (aKey < bKey) != order.descending : a < b;
}

// Brings the kept properties of a record up to date; a new record lacks what is not sent.
void TableIndex::SetColumns(uint32_t place, const RecordValues& values, bool isNew)
{
    for (auto& [property, column] : m_numbers) {
        if (isNew)
            column.Resize(m_records.PlaceCount());
        if (values.Changes(property))
            column.Set(place, values.Number(property));
    }
    for (auto& [property, keys] : m_keys) {
        if (isNew)
            keys.column.Resize(m_records.PlaceCount());
        if (!values.Changes(property))
            continue;
        keys.column.Set(place, keys.source.KeyOfValue(values.Value(property)));
        NoteMissingNames(property);
    }
    SetBlobs(place, values, isNew);
}

std::vector<CEPROPID> TableIndex::KeptProperties() const
{
    std::vector<CEPROPID> kept;
    for (int property = 0; property < static_cast<int>(m_info.properties.size()); ++property)
        if (HasColumn(property) || m_blobs.contains(property))
            kept.push_back(PropertyAt(property).id);
    return kept;
}

bool TableIndex::Inserted(CEOID id, const RecordValues& values)
{
    if (!m_loaded)
        return true;
    const uint32_t place = m_records.Append(id);
    if (place == kNoPlace)
        return false;
    SetColumns(place, values, true);
    DropGrownKeys();
    ForEachPassing([&](PassingSet& passing) {
        passing.Resize(m_records.PlaceCount());
        passing.Set(place, Passes(*passing.Filter(), place));
    });
    ForEachOrder([&](const KnownOrder& known, RowOrder& order) {
        order.Insert(place, [&](uint32_t other) { return IsBefore(known, other, place); });
    });
    return true;
}

void TableIndex::Updated(CEOID id, const RecordValues& values)
{
    const uint32_t place = m_loaded ? m_records.Find(id) : kNoPlace;
    if (place == kNoPlace)
        return;
    SetColumns(place, values, false);
    DropGrownKeys();
    m_notEmpty.erase(place);
    const std::vector<const PassingSet*> moved = UpdatePassing(place, values);
    ForEachOrder([&](const KnownOrder& known, RowOrder& order) {
        const bool moves = std::find(moved.begin(), moved.end(), known.groups) != moved.end();
        if (!moves && !values.Changes(known.property))
            return;
        order.Remove(place);
        order.Insert(place, [&](uint32_t other) { return IsBefore(known, other, place); });
    });
}

void TableIndex::Removed(CEOID id)
{
    const uint32_t place = m_loaded ? m_records.Find(id) : kNoPlace;
    if (place == kNoPlace)
        return;
    m_records.Remove(place);
    ForEachPassing([place](PassingSet& passing) { passing.Set(place, false); });
    ForEachOrder([place](const KnownOrder&, RowOrder& order) { order.Remove(place); });
}

void TableIndex::NamesChanged(TableId referred)
{
    for (int property = 0; property < static_cast<int>(m_info.properties.size()); ++property)
        if (ReferredTable(PropertyAt(property).id) == referred) {
            m_keys.erase(property);
            DropOrders(property);
        }
}

void TableIndex::DropOrders(int property)
{
    std::erase_if(m_orders, [property](const KnownOrder& known) { return known.property == property; });
}

} // namespace mervane
