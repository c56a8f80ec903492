// Where an open database stands: its sort order and its current record.
#pragma once

#include <memory>

#include "mervane/row_index.h"

namespace mervane {

class Store;

class Cursor {
  public:
    Cursor(Store& store, TableId table, const SORTORDERSPEC& sort);

    void SetSort(const SORTORDERSPEC& sort);
    const SORTORDERSPEC& Sort() const { return m_sort; }

    CEOID Current() const { return m_current; }
    void SetCurrent(CEOID id) { m_current = id; }

    // The identifier of the record moved to, which is now the current one; 0 for none.
    CEOID First() { return ToRow(0); }
    CEOID Next();
    CEOID ToRow(uint32_t row);

    CEOID At(uint32_t row) { return Rows().At(row); }
    int RowOf(CEOID id) { return Rows().RowOf(id); }
    size_t Count() { return Rows().Count(); }

  private:
    const RowIndex& Rows();

    Store& m_store;
    TableId m_table;
    SORTORDERSPEC m_sort;
    CEOID m_current = 0;
    std::shared_ptr<const RowIndex> m_rows;
    std::shared_ptr<const RowIndex> m_walked; // the order that the current record was reached in
};

} // namespace mervane
