#include "mervane/record_set.h"

#include <algorithm>

namespace mervane {

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

PlaceFinder::PlaceFinder(const RecordSet& records) : m_records(records)
{
    const uint32_t count = records.PlaceCount();
    if (!count || records.IdAt(count - 1) / 8 > count)
        return;
    m_places.resize(size_t{records.IdAt(count - 1)} + 1, kNoPlace);
    for (uint32_t place = 0; place < count; ++place)
        if (!records.IsRemoved(place))
            m_places[records.IdAt(place)] = place;
}

} // namespace mervane
