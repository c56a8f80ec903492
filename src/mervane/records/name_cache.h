// The names of a table's records in their order: what a blob's identifiers are shown as, without a query for
// each.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "mervane/sqlite/sql_database.h"
#include "mervane/values/property_map.h"

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
    // null: there is no such record, it has no name, or its name is missing.
    const Entry* Find(CEOID id) const;
    // The place in Entries(); UINT32_MAX where Find gives null.
    uint32_t RankOf(CEOID id) const;
    // The names of the records, in the order of the names, joined; unknown identifiers are left out.
    std::wstring Join(std::span<const CEOID> ids, wchar_t separator) const;
    // Why not all names are known; None when they are. Only then does an identifier or a name that is not
    // found not exist.
    StoreTrouble Missing() const { return m_missing; }

  private:
    std::vector<Entry> m_entries;
    std::vector<std::pair<CEOID, uint32_t>> m_rankOf; // by identifier
    StoreTrouble m_missing;
};

// The names of each table, read when first asked for.
class NameCaches {
  public:
    explicit NameCaches(Database& database) : m_database(database) {}

    // The categories' or contacts'; valid until a Forget.
    const NameCache& Of(TableId table);
    void Forget(TableId table) { m_caches[IndexOf(table)].reset(); }
    void ForgetAll() { m_caches = {}; }
    // What could not be read for a reason that may pass.
    void ForgetIncomplete();

  private:
    Database& m_database;
    std::array<std::optional<NameCache>, kTableCount> m_caches;
};

} // namespace mervane
