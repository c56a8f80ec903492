// Where an open database stands: its sort order and its current record.
#pragma once

#include <memory>

#include "mervane/table_index.h"

namespace mervane {

class Store;

class Cursor {
  public:
    Cursor(Store& store, TableId table, const SORTORDERSPEC& sort);
    ~Cursor();
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    void SetSort(const SORTORDERSPEC& sort);
    const SORTORDERSPEC& Sort() const { return m_sort; }
    TableId Table() const { return m_table; }

    CEOID Current() const { return m_current; }
    void SetCurrent(CEOID id);

    // The identifier of the record moved to, which is now the current one; 0 for none. Inside a read, like
    // all that follows.
    CEOID First() { return ToRow(0); }
    CEOID Next();
    CEOID ToRow(uint32_t row);

    CEOID At(uint32_t row);
    int RowOf(CEOID id);
    uint32_t Count();
    bool HasOrder() const { return m_order != nullptr; }

    // The record is about to be deleted, or to move in the order: a walk that stands on it will go on behind
    // its present row.
    void BeforeLeaving(CEOID id);

  private:
    void Refresh();
    void FindWayOn(TableIndex& oldIndex, const RowOrder& oldOrder);

    Store& m_store;
    TableId m_table;
    SORTORDERSPEC m_sort;
    std::shared_ptr<TableIndex> m_index;
    std::shared_ptr<const RowOrder> m_order;
    CEOID m_current = 0;
    // The current record's row, as long as the order is of this version.
    uint32_t m_row = 0;
    uint64_t m_rowVersion = 0;
    bool m_rowKnown = false;
    // When the current record has left its row: the record that follows, 0 for the end.
    bool m_hasLeft = false;
    CEOID m_following = 0;
};

} // namespace mervane
