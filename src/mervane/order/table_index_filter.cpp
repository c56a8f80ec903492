// The part of TableIndex that rows under a filter need.
#include "mervane/order/table_index.h"

#include <algorithm>

namespace mervane {

namespace {

// How much of a table's blobs is kept, and how much of each at least.
constexpr size_t kBlobBytes = 8 * 1024 * 1024;
constexpr size_t kShortestBlob = 40;

size_t BlobLimit(uint32_t places)
{
    return std::max(kShortestBlob, kBlobBytes / std::max<uint32_t>(places, 1));
}

// What was read when there were few records keeps long blobs. When many have come it is better read again.
bool HasGrown(const BlobColumn& column, uint32_t places)
{
    return column.Bytes() > std::max(kBlobBytes, places * kShortestBlob) * 3 / 2;
}

// The passing places, then the others, each in the given order.
std::vector<uint32_t> PassingFirst(const RowOrder& plain, const PassingSet& passing)
{
    std::vector<uint32_t> grouped(plain.Count());
    uint32_t next[] = {passing.Count(), 0}; // of the others, of the passing ones
    plain.ForEachPlace([&](uint32_t place) { grouped[next[passing.Passes(place)]++] = place; });
    return grouped;
}

} // namespace

void TableIndex::LoadBlobs(int property)
{
    const uint32_t places = m_records.PlaceCount();
    BlobColumn& column =
        m_blobs.try_emplace(property, m_database, m_info, PropertyAt(property), places, BlobLimit(places))
            .first->second;
    uint32_t next = 0;
    ScanValues(property, [&](CEOID id, const Statement& row) {
        if (const uint32_t place = m_records.FindFrom(id, &next); place != kNoPlace)
            column.Set(place, row.Blob(1));
    });
}

BlobColumn& TableIndex::BlobsOf(int property)
{
    if (!m_blobs.contains(property))
        LoadBlobs(property);
    return m_blobs.at(property);
}

void TableIndex::SetBlobs(uint32_t place, const RecordValues& values, bool isNew)
{
    for (auto& [property, column] : m_blobs) {
        if (isNew)
            column.Resize(m_records.PlaceCount());
        if (!values.Changes(property))
            continue;
        const CEPROPVAL* value = values.Value(property);
        if (value)
            column.Set(place, std::span<const BYTE>(value->val.blob.lpb, value->val.blob.dwCount));
        else
            column.Set(place, std::nullopt);
    }
    std::erase_if(m_blobs,
                  [this](const auto& blobs) { return HasGrown(blobs.second, m_records.PlaceCount()); });
}

NumberColumn& TableIndex::NumbersOf(int property)
{
    if (!m_numbers.contains(property))
        LoadNumbers(property);
    return m_numbers.at(property);
}

// Nearly every record has the number that came with the records.
bool TableIndex::IsEmptyRecord(uint32_t place)
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

bool TableIndex::PassesWithout(const RowFilter& filter, uint32_t place)
{
    return filter.passes(nullptr) || (filter.emptyPasses && IsEmptyRecord(place));
}

bool TableIndex::PassesByNumber(const RowFilter& filter, const NumberColumn& numbers, uint32_t place)
{
    if (numbers.IsMissing(place))
        return PassesWithout(filter, place);
    const CEPROPVAL value = numbers.Value(place);
    return filter.passes(&value);
}

bool TableIndex::PassesByBlob(const RowFilter& filter, BlobColumn& blobs, uint32_t place)
{
    const auto blob = ReadValue([&] { return blobs.At(place, m_records.IdAt(place)); });
    if (!blob)
        return PassesWithout(filter, place);
    CEPROPVAL value{};
    value.propid = filter.property;
    value.val.blob = {static_cast<DWORD>(blob->size()), const_cast<BYTE*>(blob->data())}; // only read
    return filter.passes(&value);
}

bool TableIndex::Passes(const RowFilter& filter, uint32_t place)
{
    const int property = FindProperty(m_info, filter.property);
    return IsNumber(property) ? PassesByNumber(filter, NumbersOf(property), place)
                              : PassesByBlob(filter, BlobsOf(property), place);
}

template <typename Test> void TableIndex::TestAll(PassingSet& passing, Test test)
{
    for (uint32_t place = 0; place < m_records.PlaceCount(); ++place)
        if (!m_records.IsRemoved(place))
            passing.Set(place, test(place));
}

std::shared_ptr<const PassingSet> TableIndex::PassingOf(const std::shared_ptr<const RowFilter>& filter)
{
    const int property = FindProperty(m_info, filter->property);
    auto passing = std::make_shared<PassingSet>(filter);
    passing->Resize(Records().PlaceCount());
    if (IsNumber(property)) {
        const NumberColumn& numbers = NumbersOf(property);
        TestAll(*passing, [&](uint32_t place) { return PassesByNumber(*filter, numbers, place); });
    } else {
        BlobColumn& blobs = BlobsOf(property);
        TestAll(*passing, [&](uint32_t place) { return PassesByBlob(*filter, blobs, place); });
    }
    m_passing.push_back(passing);
    return passing;
}

// The sets in which the record has begun or ceased to pass.
std::vector<const PassingSet*> TableIndex::UpdatePassing(uint32_t place, const RecordValues& values)
{
    std::vector<const PassingSet*> changed;
    ForEachPassing([&](PassingSet& passing) {
        const RowFilter& filter = *passing.Filter();
        const bool concerns = filter.emptyPasses || values.Changes(FindProperty(m_info, filter.property));
        if (concerns && passing.Set(place, Passes(filter, place)))
            changed.push_back(&passing);
    });
    return changed;
}

std::shared_ptr<const RowOrder> TableIndex::OrderOf(const SORTORDERSPEC& sort, const Passing& passing)
{
    const int property = FindProperty(m_info, sort.propid);
    const bool descending = (sort.dwFlags & CEDB_SORT_DESCENDING) != 0;
    const auto plain = PlainOrderOf(property, descending);
    if (!passing)
        return plain;
    const auto order = std::make_shared<RowOrder>(PassingFirst(*plain, *passing));
    Remember({property, descending, order.get(), order, passing.get(), passing});
    return order;
}

} // namespace mervane
