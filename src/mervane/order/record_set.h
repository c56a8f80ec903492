// The records of a table in memory. Each has a place, which it keeps: places ascend with the identifiers.
#pragma once

#include <cstdint>
#include <vector>

#include "mervane/values/ce_types.h"

namespace mervane {

constexpr uint32_t kNoPlace = UINT32_MAX;

class RecordSet {
  public:
    RecordSet() = default;
    // ids: ascending, each once.
    explicit RecordSet(std::vector<CEOID> ids) : m_ids(std::move(ids)), m_removed(m_ids.size()) {}

    // Counts the places of removed records too.
    uint32_t PlaceCount() const { return static_cast<uint32_t>(m_ids.size()); }
    CEOID IdAt(uint32_t place) const { return m_ids[place]; }
    bool IsRemoved(uint32_t place) const { return m_removed[place]; }
    // kNoPlace for a record that is not there.
    uint32_t Find(CEOID id) const;
    // The same, quicker when the records are asked for one after the other. *next is 0 before the first.
    uint32_t FindFrom(CEOID id, uint32_t* next) const;

    // The new record's place; kNoPlace, and nothing changes, unless its identifier is the highest.
    uint32_t Append(CEOID id);
    void Remove(uint32_t place) { m_removed[place] = true; }

  private:
    std::vector<CEOID> m_ids;
    std::vector<bool> m_removed;
};

// Ascending, each once.
std::vector<CEOID> SortedIds(std::vector<CEOID> ids);

// Finds many records in any order at the price of some memory while it lives.
class PlaceFinder {
  public:
    explicit PlaceFinder(const RecordSet& records);
    uint32_t Find(CEOID id) const
    {
        if (m_places.empty())
            return m_records.Find(id);
        return id < m_places.size() ? m_places[id] : kNoPlace;
    }

  private:
    const RecordSet& m_records;
    std::vector<uint32_t> m_places; // by identifier; empty when the identifiers are too far apart
};

} // namespace mervane
