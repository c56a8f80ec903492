// What is kept in memory of one table: its records, the properties they are sorted by, and the orders in use.
// Each part is read when it is first needed and follows the program's own writes; what other programs write
// makes the store start a new index.
#pragma once

#include <memory>
#include <vector>

#include "mervane/order/known_orders.h"
#include "mervane/order/passing_sets.h"
#include "mervane/order/row_order.h"
#include "mervane/order/table_columns.h"

namespace mervane {

class TableIndex {
  public:
    TableIndex(Database& database, TableId table, NameCaches& names);

    const RecordSet& Records() { return m_columns.Records(); }
    // Which records pass a filter by a number or a blob of this table. It is kept up to date while somebody
    // holds it.
    using Passing = std::shared_ptr<const PassingSet>;
    Passing PassingOf(const std::shared_ptr<const RowFilter>& filter);
    // The order of a sort by a property of this table; with passing, which PassingOf gave, the records that
    // pass come first, each group in that order. It is kept up to date; where that is no longer possible, the
    // next call gives another one.
    std::shared_ptr<const RowOrder> OrderOf(const SORTORDERSPEC& sort, const Passing& passing = nullptr);
    // Whether this one, which somebody holds, is still kept up to date and is of that sort.
    bool IsOrderOf(const SORTORDERSPEC& sort, const RowOrder* order) const;
    // Why not all records are known; None when they are. Only then is one that is not found not there.
    StoreTrouble MissingRecords() const { return m_columns.MissingRecords(); }
    // The same of the values that orders and filters go by.
    StoreTrouble MissingValues() const { return m_columns.MissingValues(); }

    // The properties that are kept of each record; none before the records are needed.
    std::vector<CEPROPID> KeptProperties() const { return m_columns.KeptProperties(); }
    bool Has(CEOID id) { return PlaceOf(id) != kNoPlace; }
    // Records that the program has written, or has read after another program's write: then the values are at
    // least those of KeptProperties. Inserted is false when the index cannot follow.
    [[nodiscard]] bool Inserted(CEOID id, const RecordValues& values);
    void Updated(CEOID id, const RecordValues& values);
    void Removed(CEOID id);
    // Records of a table that this one's blobs refer to have other names now.
    void NamesChanged(TableId referred);

  private:
    SortBy SortOf(const SORTORDERSPEC& sort) const;
    std::shared_ptr<const RowOrder> PlainOrderOf(const SortBy& sort);
    // kNoPlace also before the records are needed.
    uint32_t PlaceOf(CEOID id);
    bool IsBefore(const KnownOrders::Known& order, uint32_t a, uint32_t b);
    // Acts on the orders in use whose property can be compared by; the others are given up.
    template <typename Action> void ForEachOrder(Action action);
    void InsertInto(const KnownOrders::Known& known, RowOrder& order, uint32_t place);

    const TableInfo& m_info;
    TableColumns m_columns;
    PassingSets m_passing;
    KnownOrders m_orders;
    std::shared_ptr<RowOrder> m_lastOrder; // outlives its cursors, for the next one
};

} // namespace mervane
