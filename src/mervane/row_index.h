// The order of a table's records under one sort.
#pragma once

#include <unordered_map>
#include <vector>

#include "mervane/property_map.h"
#include "mervane/sql_database.h"

namespace mervane {

class NameCache;

class RowIndex {
  public:
    // names: what the property's blobs refer to; null when the property is no blob.
    RowIndex(Database& database, const TableInfo& table, const SORTORDERSPEC& sort, const NameCache* names);

    const SORTORDERSPEC& Sort() const { return m_sort; }
    size_t Count() const { return m_rows.size(); }
    CEOID At(size_t row) const { return row < m_rows.size() ? m_rows[row] : 0; }
    int RowOf(CEOID id) const;

  private:
    SORTORDERSPEC m_sort;
    std::vector<CEOID> m_rows;
    std::unordered_map<CEOID, int> m_rowOf;
};

} // namespace mervane
