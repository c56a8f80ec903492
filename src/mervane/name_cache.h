// The names of a table's records in their order: what a blob's identifiers are shown as, without a query for
// each.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "mervane/property_map.h"
#include "mervane/sql_database.h"

namespace mervane {

class NameCache {
  public:
    struct Entry {
        CEOID id;
        std::wstring name;
        bool hidden;
    };

    // Reads a table that has names.
    NameCache(Database& database, TableId table);

    // In the order of the names.
    const std::vector<Entry>& Entries() const { return m_entries; }
    // null: there is no such record, or it has no name.
    const Entry* Find(CEOID id) const;
    // The place in Entries(); UINT32_MAX where Find gives null.
    uint32_t RankOf(CEOID id) const;
    // The names of the records, in the order of the names, joined; unknown identifiers are left out.
    std::wstring Join(std::span<const CEOID> ids, wchar_t separator) const;

  private:
    std::vector<Entry> m_entries;
    std::vector<std::pair<CEOID, uint32_t>> m_rankOf; // by identifier
};

} // namespace mervane
