#include "mervane/store/record_search.h"

#include <algorithm>
#include <functional>

#include "mervane/records/table_scan.h"
#include "mervane/search/text_pattern.h"
#include "mervane/store/store.h"

namespace mervane {

namespace {

constexpr uint64_t kDay = 24ull * 60 * 60 * 10'000'000; // in units of a FILETIME

using Matches = std::function<bool(const Statement& row)>;

Matches MatcherOf(const SearchRequest& request)
{
    constexpr int kColumn = 1;
    if (PropertyType(request.property) == CEVT_FILETIME)
        return [day = request.time / kDay](const Statement& row) {
            const auto stored = row.Integer(kColumn);
            return stored && static_cast<uint64_t>(*stored) / kDay == day;
        };
    return [pattern = TextPattern(request.text, request.matchCase)](const Statement& row) {
        const auto stored = row.Text(kColumn);
        return stored && pattern.IsIn(*stored);
    };
}

bool CanSearch(int property, CEPROPID id)
{
    const WORD type = PropertyType(id);
    return property >= 0 && (type == CEVT_LPWSTR || type == CEVT_FILETIME);
}

} // namespace

CEOID RecordSearch::Next(const std::shared_ptr<Store>& store, TableId table, const SORTORDERSPEC& sort,
                         const SearchRequest& request, CEOID behind)
{
    TableIndex& index = *store->IndexOf(table);
    const auto order = index.OrderOf(sort);
    const Basis basis{request, table, sort.propid, sort.dwFlags, store->Version()};
    if (m_store.lock() != store || m_basis != basis) {
        m_basis.reset();
        m_store = store;
        m_missed = Find(*store, basis, *order);
        if (!MayPass(m_missed))
            m_basis = basis;
    }
    store->Note(m_missed);
    if (m_found.empty())
        return 0;
    m_lastAnswer = IndexBehind(*order, index, behind) % m_found.size();
    return m_found[m_lastAnswer];
}

// One pass over the table in storage order, then one over the rows.
StoreTrouble RecordSearch::Find(Store& store, const Basis& basis, const RowOrder& order)
{
    m_found.clear();
    m_rows.clear();
    m_lastAnswer = 0;
    const TableInfo& info = InfoOf(basis.table);
    const int property = FindProperty(info, basis.request.property);
    if (!CanSearch(property, basis.request.property))
        return StoreTrouble::None;
    TableIndex& index = *store.IndexOf(basis.table);
    const RecordSet& records = index.Records();
    const PlaceFinder finder(records);
    std::vector<bool> isFound(records.PlaceCount());
    const Matches matches = MatcherOf(basis.request);
    const char* column = info.properties[static_cast<size_t>(property)].column;
    const StoreTrouble missed = store.Scan(basis.table, column, [&](CEOID id, const Statement& row) {
        if (!matches(row))
            return;
        if (const uint32_t place = finder.Find(id); place != kNoPlace)
            isFound[place] = true;
    });
    if (MayPass(missed))
        return missed;
    uint32_t row = 0;
    order.ForEachPlace([&](uint32_t place) {
        if (isFound[place]) {
            m_found.push_back(records.IdAt(place));
            m_rows.push_back(row);
        }
        ++row;
    });
    return missed == StoreTrouble::None ? index.MissingRecords() : missed;
}

size_t RecordSearch::IndexBehind(const RowOrder& order, TableIndex& index, CEOID id) const
{
    if (m_found[m_lastAnswer] == id)
        return m_lastAnswer + 1;
    const uint32_t place = id ? index.Records().Find(id) : kNoPlace;
    const uint32_t row = place == kNoPlace ? kNoRow : order.RowOf(place);
    if (row == kNoRow)
        return 0;
    return static_cast<size_t>(std::upper_bound(m_rows.begin(), m_rows.end(), row) - m_rows.begin());
}

} // namespace mervane
