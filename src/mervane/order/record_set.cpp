#include "mervane/order/record_set.h"

#include <algorithm>

namespace mervane {

namespace {

// Whether a table with a row for each identifier up to the highest is worth its memory.
bool AreDense(CEOID highest, size_t count)
{
    return highest / 8 <= count;
}

} // namespace

uint32_t RecordSet::Find(CEOID id) const
{
    const auto found = std::lower_bound(m_ids.begin(), m_ids.end(), id);
    const auto place = static_cast<uint32_t>(found - m_ids.begin());
    return found != m_ids.end() && *found == id && !m_removed[place] ? place : kNoPlace;
}

uint32_t RecordSet::FindFrom(CEOID id, uint32_t* next) const
{
    uint32_t place = *next;
    if (place >= m_ids.size() || m_ids[place] != id || m_removed[place])
        place = Find(id);
    if (place != kNoPlace)
        *next = place + 1;
    return place;
}

uint32_t RecordSet::Append(CEOID id)
{
    if (!m_ids.empty() && id <= m_ids.back())
        return kNoPlace;
    m_ids.push_back(id);
    m_removed.push_back(false);
    return PlaceCount() - 1;
}

std::vector<CEOID> SortedIds(std::vector<CEOID> ids)
{
    const CEOID highest = ids.empty() ? 0 : *std::max_element(ids.begin(), ids.end());
    if (!AreDense(highest, ids.size())) {
        std::sort(ids.begin(), ids.end());
        ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
        return ids;
    }
    std::vector<bool> isThere(size_t{highest} + 1);
    for (const CEOID id : ids)
        isThere[id] = true;
    ids.clear();
    for (size_t id = 0; id < isThere.size(); ++id)
        if (isThere[id])
            ids.push_back(static_cast<CEOID>(id));
    return ids;
}

PlaceFinder::PlaceFinder(const RecordSet& records) : m_records(records)
{
    const uint32_t count = records.PlaceCount();
    if (!count || !AreDense(records.IdAt(count - 1), count))
        return;
    m_places.resize(size_t{records.IdAt(count - 1)} + 1, kNoPlace);
    for (uint32_t place = 0; place < count; ++place)
        if (!records.IsRemoved(place))
            m_places[records.IdAt(place)] = place;
}

} // namespace mervane
