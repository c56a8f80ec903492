#include "mervane/order/table_columns.h"

#include <algorithm>
#include <utility>

#include "mervane/order/place_sort.h"
#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

constexpr size_t kMiB = 1024 * 1024;
// How much of each table's sort keys is kept, and how long a key may at least be.
constexpr size_t kKeyBytes[kTableCount] = {8 * kMiB, kMiB, kMiB};
constexpr size_t kShortestLimit = 8;
// How much of a table's blobs is kept, and how much of each at least.
constexpr size_t kBlobBytes = 8 * kMiB;
constexpr size_t kShortestBlob = 40;

size_t KeyLimit(TableId table, uint32_t places)
{
    const size_t share = kKeyBytes[IndexOf(table)] / std::max<uint32_t>(places, 1);
    return std::max(kShortestLimit, share < 16 ? 0 : share - 8);
}

size_t BlobLimit(uint32_t places)
{
    return std::max(kShortestBlob, kBlobBytes / std::max<uint32_t>(places, 1));
}

} // namespace

TableColumns::TableColumns(Database& database, TableId table, NameCaches& names)
    : m_database(database), m_table(table), m_info(InfoOf(table)), m_names(names),
      m_emptyTest(database, m_info)
{}

bool TableColumns::IsNumber(int property) const
{
    const WORD type = PropertyType(PropertyAt(property).id);
    return type != CEVT_LPWSTR && type != CEVT_BLOB;
}

const RecordSet& TableColumns::Records()
{
    if (!m_loaded)
        LoadRecords();
    return m_records;
}

// The records come with the property that the table is usually sorted by, when that is a number: an index of
// the file has both, so that a start reads nothing else, and most likely in its order.
void TableColumns::LoadRecords()
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
void TableColumns::ScanValues(int property, const OnScannedRow& onRow)
{
    NoteMissingValues(ScanTable(m_database, m_info.name, PropertyAt(property).column, onRow));
}

// What may pass counts more: it is tried again.
void TableColumns::NoteMissingValues(StoreTrouble missing)
{
    if (missing != StoreTrouble::None && !MayPass(m_missingValues))
        m_missingValues = missing;
}

// Of the names that the property's keys are made of.
void TableColumns::NoteMissingNames(int property)
{
    if (const auto referred = ReferredTable(PropertyAt(property).id))
        NoteMissingValues(m_names.Of(*referred).Missing());
}

NumberColumn& TableColumns::NumbersOf(int property)
{
    if (!m_numbers.contains(property))
        LoadNumbers(property);
    return m_numbers.at(property);
}

TableColumns::Keys& TableColumns::KeysOf(int property)
{
    if (!m_keys.contains(property))
        LoadKeys(property);
    return m_keys.at(property);
}

BlobColumn& TableColumns::BlobsOf(int property)
{
    if (!m_blobs.contains(property))
        LoadBlobs(property);
    return m_blobs.at(property);
}

void TableColumns::LoadNumbers(int property)
{
    NumberColumn& column = m_numbers.try_emplace(property, PropertyAt(property)).first->second;
    column.Resize(m_records.PlaceCount());
    const PlaceFinder finder(m_records);
    ScanValues(property, [&](CEOID id, const Statement& row) {
        if (const uint32_t place = finder.Find(id); place != kNoPlace)
            column.Set(place, row.Integer(1));
    });
}

void TableColumns::LoadKeys(int property)
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

void TableColumns::LoadBlobs(int property)
{
    const uint32_t places = m_records.PlaceCount();
    BlobColumn& column =
        m_blobs.try_emplace(property, m_database, m_info, PropertyAt(property), places, BlobLimit(places))
            .first->second;
    uint32_t next = 0;
    ScanValues(property, [&](CEOID id, const Statement& row) {
        if (const uint32_t place = m_records.FindFrom(id, &next); place != kNoPlace)
            column.Set(place, row, 1);
    });
}

// Drops the kept keys that were not used for the longest time, except those of the given property.
void TableColumns::KeepWithinLimit(int property)
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

// What was read when there were few records keeps long values. When many have come it is better read again.
void TableColumns::DropGrown()
{
    std::erase_if(m_keys, [this](const auto& keys) {
        return keys.second.column.Bytes() > kKeyBytes[IndexOf(m_table)] * 3 / 2;
    });
    std::erase_if(m_blobs, [this](const auto& blobs) {
        return blobs.second.Bytes() > std::max(kBlobBytes, m_records.PlaceCount() * kShortestBlob) * 3 / 2;
    });
}

std::vector<CEPROPID> TableColumns::KeptProperties() const
{
    std::vector<CEPROPID> kept;
    for (int property = 0; property < static_cast<int>(m_info.properties.size()); ++property)
        if (CanCompare(property) || m_blobs.contains(property))
            kept.push_back(PropertyAt(property).id);
    return kept;
}

uint32_t TableColumns::Append(CEOID id, const RecordValues& values)
{
    const uint32_t place = m_records.Append(id);
    if (place == kNoPlace)
        return kNoPlace;
    for (auto& [property, column] : m_numbers)
        column.Resize(m_records.PlaceCount());
    for (auto& [property, keys] : m_keys)
        keys.column.Resize(m_records.PlaceCount());
    for (auto& [property, column] : m_blobs)
        column.Resize(m_records.PlaceCount());
    Update(place, values);
    return place;
}

void TableColumns::Update(uint32_t place, const RecordValues& values)
{
    m_notEmpty.erase(place);
    for (auto& [property, column] : m_numbers)
        if (values.Changes(property))
            column.Set(place, values.Number(property));
    for (auto& [property, keys] : m_keys)
        if (values.Changes(property)) {
            keys.column.Set(place, keys.source.KeyOfValue(values.Value(property)));
            NoteMissingNames(property);
        }
    for (auto& [property, column] : m_blobs)
        if (values.Changes(property))
            column.Set(place, values.Bytes(property));
    DropGrown();
}

std::vector<uint32_t> TableColumns::Sorted(int property, bool descending)
{
    (void)Records();
    if (IsNumber(property)) {
        const NumberColumn& numbers = NumbersOf(property);
        return SortPlaces(m_records, numbers, descending, std::exchange(m_scanOrder, {}));
    }
    Keys& keys = KeysOf(property);
    keys.lastUse = ++m_useCount;
    return SortPlaces(m_records, keys.column, descending,
                      [&](uint32_t place) { return WholeKey(keys, place); });
}

std::string TableColumns::WholeKey(Keys& keys, uint32_t place)
{
    return ReadValue([&] { return std::string(keys.source.ReadKey(m_records.IdAt(place)).value_or("")); });
}

bool TableColumns::CanCompare(int property) const
{
    return m_numbers.contains(property) || m_keys.contains(property);
}

// Those that lack the property come last in either direction.
bool TableColumns::IsBefore(int property, bool descending, uint32_t a, uint32_t b)
{
    const auto numbers = m_numbers.find(property);
    const bool isNumber = numbers != m_numbers.end();
    const auto isMissing = [&](uint32_t place) {
        return isNumber ? numbers->second.IsMissing(place) : m_keys.at(property).column.IsMissing(place);
    };
    const bool aMissing = isMissing(a), bMissing = isMissing(b);
    if (aMissing || bMissing)
        return aMissing == bMissing ? a < b : bMissing;
    if (!isNumber)
        return IsKeyBefore(m_keys.at(property), descending, a, b);
    const uint64_t aKey = numbers->second.Key(a), bKey = numbers->second.Key(b);
    return aKey != bKey ? (aKey < bKey) != descending : a < b;
}

bool TableColumns::IsKeyBefore(Keys& keys, bool descending, uint32_t a, uint32_t b)
{
    auto result = keys.column.Compare(a, b);
    if (!result)
        result = WholeKey(keys, a).compare(WholeKey(keys, b));
    return *result ? (*result < 0) != descending : a < b;
}

bool TableColumns::Passes(const RowFilter& filter, uint32_t place)
{
    const int property = FindProperty(m_info, filter.property);
    return IsNumber(property) ? PassesByNumber(filter, NumbersOf(property), place)
                              : PassesByBlob(filter, BlobsOf(property), place);
}

bool TableColumns::PassesByNumber(const RowFilter& filter, const NumberColumn& numbers, uint32_t place)
{
    if (numbers.IsMissing(place))
        return PassesWithout(filter, place);
    const CEPROPVAL value = numbers.Value(place);
    return filter.passes(&value);
}

bool TableColumns::PassesByBlob(const RowFilter& filter, BlobColumn& blobs, uint32_t place)
{
    const auto bytes = ReadValue([&] { return blobs.At(place, m_records.IdAt(place)); });
    if (!bytes)
        return PassesWithout(filter, place);
    CEPROPVAL value{};
    value.propid = filter.property;
    if (PropertyType(filter.property) == CEVT_BLOB) {
        value.val.blob = {static_cast<DWORD>(bytes->size()), const_cast<BYTE*>(bytes->data())}; // only read
        return filter.passes(&value);
    }
    std::wstring text = DecodeText({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
    value.val.lpwstr = text.data();
    return filter.passes(&value);
}

bool TableColumns::PassesWithout(const RowFilter& filter, uint32_t place)
{
    return filter.passes(nullptr) || (filter.emptyPasses && IsEmptyRecord(place));
}

// Nearly every record has the number that came with the records.
bool TableColumns::IsEmptyRecord(uint32_t place)
{
    for (const auto& [property, column] : m_numbers)
        if (!column.IsMissing(place))
            return false;
    if (m_notEmpty.contains(place))
        return false;
    const bool isEmpty = ReadValue([&] { return m_emptyTest.IsEmpty(m_records.IdAt(place)); });
    if (!isEmpty)
        m_notEmpty.insert(place);
    return isEmpty;
}

} // namespace mervane
