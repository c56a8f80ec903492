// Where an open database stands: its sort order, its row filter and its current record.
#pragma once

#include <memory>

#include "mervane/order/table_index.h"

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
    // Of a number or a blob of the table; null: none.
    void SetRowFilter(std::shared_ptr<const RowFilter> filter);
    bool HasRowFilter() const { return m_filter != nullptr; }
    TableId Table() const { return m_table; }

    CEOID Current() const { return m_current; }
    void SetCurrent(CEOID id) { StandOn(id, Way::Sort); }

    // The identifier of the record moved to, which is now the current one; 0 for none. Next goes on as the
    // walk was begun: by rows after ToRow, otherwise by the sort alone. Where records are missing that could
    // not be read, the store notes why with the answer "none", and with counts; with PassingCount also where
    // values are missing that the rows are sorted or filtered by. Inside a read, like all that follows.
    CEOID First() { return MoveTo(0, Way::Sort); }
    CEOID Next();
    CEOID ToRow(uint32_t row) { return MoveTo(row, Way::Rows); }

    // Of the rows: under a filter those that pass come first.
    CEOID At(uint32_t row);
    int RowOf(CEOID id);
    uint32_t Count();
    uint32_t PassingCount();

    // Where it stands in its walk, to be stood on again as if it had never moved meanwhile.
    struct Place;
    Place Stand() const;
    void StandAgain(const Place& place);

    // A record is about to be deleted, or to get these values (null: to be deleted): a walk that stands on it
    // and would lose its place will go on behind its present row.
    void BeforeWrite(CEOID id, const RecordValues* values);

  private:
    enum class Way { Sort, Rows };
    // What holds for one state of the index.
    struct Orders {
        std::shared_ptr<TableIndex> index;
        TableIndex::Passing passing;          // null without a filter
        std::shared_ptr<const RowOrder> sort; // all records
        std::shared_ptr<const RowOrder> rows; // the same, without a filter

        const RowOrder& Of(Way way) const { return way == Way::Sort ? *sort : *rows; }
        // 0 past the end.
        CEOID At(Way way, uint32_t row) const;
        // kNoRow for a record that is not there.
        uint32_t RowOf(Way way, CEOID id) const;
    };

    bool AreOrdersCurrent() const;
    void Refresh();
    void FindWayOn(const Orders& old);
    bool HasMoved(CEOID before, CEOID id, CEOID behind) const;
    CEOID NearestLeft(const Orders& old, uint32_t row, int step) const;
    bool MovesWith(const RecordValues& values) const;
    void StandOn(CEOID id, Way way);
    bool StandsOn(const Place& place) const;
    CEOID MoveTo(uint32_t row, Way way);
    void NoteMissing();

    Store& m_store;
    TableId m_table;
    SORTORDERSPEC m_sort;
    std::shared_ptr<const RowFilter> m_filter;
    Orders m_orders; // empty until first asked for
    CEOID m_current = 0;
    Way m_way = Way::Sort;
    // The current record's row, as long as the order is of this version.
    uint32_t m_row = 0;
    uint64_t m_rowVersion = 0;
    bool m_rowKnown = false;
    // When the current record has left its row: the record that follows, 0 for the end.
    bool m_hasLeft = false;
    CEOID m_following = 0;
};

struct Cursor::Place {
    Orders orders;
    CEOID current;
    Way way;
    bool hasLeft;
    CEOID following;
};

} // namespace mervane
