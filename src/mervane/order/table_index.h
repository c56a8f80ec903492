// What is kept in memory of one table: its records, the properties they are sorted by, and the orders in use.
// Each part is read when it is first needed and follows the program's own writes; what other programs write
// makes the store start a new index.
#pragma once

#include <map>
#include <memory>
#include <unordered_set>
#include <vector>

#include "mervane/order/blob_column.h"
#include "mervane/order/key_column.h"
#include "mervane/order/key_source.h"
#include "mervane/order/number_column.h"
#include "mervane/order/passing_set.h"
#include "mervane/order/record_set.h"
#include "mervane/order/row_order.h"
#include "mervane/records/empty_record.h"
#include "mervane/records/table_scan.h"

namespace mervane {

class TableIndex {
  public:
    TableIndex(Database& database, TableId table, NameCaches& names);

    const RecordSet& Records();
    // Which records pass a filter by a number or a blob of this table. It is kept up to date while somebody
    // holds it.
    std::shared_ptr<const PassingSet> PassingOf(const std::shared_ptr<const RowFilter>& filter);
    // The order of a sort by a property of this table; with passing, which PassingOf gave, the records that
    // pass come first, each group in that order. It is kept up to date; where that is no longer possible, the
    // next call gives another one.
    using Passing = std::shared_ptr<const PassingSet>;
    std::shared_ptr<const RowOrder> OrderOf(const SORTORDERSPEC& sort, const Passing& passing = nullptr);
    // Whether this one, which somebody holds, is still kept up to date and is of that sort.
    bool IsOrderOf(const SORTORDERSPEC& sort, const RowOrder* order) const;
    // Why not all records are known; None when they are. Only then is one that is not found not there.
    StoreTrouble MissingRecords() const { return m_missingRecords; }
    // The same of the values that orders and filters go by.
    StoreTrouble MissingValues() const { return m_missingValues; }

    // The properties that are kept of each record; none before the records are needed.
    std::vector<CEPROPID> KeptProperties() const;
    bool Has(CEOID id) const { return m_loaded && m_records.Find(id) != kNoPlace; }
    // What the program itself has written, or has read of what another one has: then the values are at least
    // those of KeptProperties. Inserted is false when the index cannot follow.
    [[nodiscard]] bool Inserted(CEOID id, const RecordValues& values);
    void Updated(CEOID id, const RecordValues& values);
    void Removed(CEOID id);
    // Records of a table that this one's blobs refer to have other names now.
    void NamesChanged(TableId referred);

  private:
    struct Keys {
        Keys(Database& database, const TableInfo& table, const Property& property, NameCaches& names,
             uint32_t places, size_t keyLimit)
            : source(database, table, property, names), column(places, keyLimit)
        {}
        KeySource source;
        KeyColumn column;
        uint64_t lastUse = 0;
    };
    struct KnownOrder {
        int property;
        bool descending;
        const RowOrder* address;
        std::weak_ptr<RowOrder> order;
        // What is first grouped by; null for an order without a filter.
        const PassingSet* groups = nullptr;
        std::weak_ptr<const PassingSet> passing = {};

        bool IsAlive() const { return !order.expired() && (!groups || !passing.expired()); }
    };

    const Property& PropertyAt(int property) const
    {
        return m_info.properties[static_cast<size_t>(property)];
    }
    bool IsNumber(int property) const;
    void ScanValues(int property, const OnScannedRow& onRow);
    void NoteMissingValues(StoreTrouble missing);
    void NoteMissingNames(int property);
    // A value that is read by itself for an order or a filter: where that fails, the values are not whole.
    template <typename Read> auto ReadValue(Read read)
    {
        OwnTrouble own(m_database);
        auto value = read();
        NoteMissingValues(own.Take());
        return value;
    }
    std::string WholeKey(Keys& keys, uint32_t place);
    void LoadRecords();
    void LoadNumbers(int property);
    void LoadKeys(int property);
    void KeepWithinLimit(int property);
    void DropGrownKeys();
    void Remember(const KnownOrder& known);
    std::shared_ptr<const RowOrder> PlainOrderOf(int property, bool descending);
    std::shared_ptr<RowOrder> MakeOrder(int property, bool descending);
    BlobColumn& BlobsOf(int property);
    void LoadBlobs(int property);
    void SetBlobs(uint32_t place, const RecordValues& values, bool isNew);
    NumberColumn& NumbersOf(int property);
    bool Passes(const RowFilter& filter, uint32_t place);
    bool PassesByNumber(const RowFilter& filter, const NumberColumn& numbers, uint32_t place);
    bool PassesByBlob(const RowFilter& filter, BlobColumn& blobs, uint32_t place);
    bool PassesWithout(const RowFilter& filter, uint32_t place);
    template <typename Test> void TestAll(PassingSet& passing, Test test); // test(place)
    bool IsEmptyRecord(uint32_t place);
    std::vector<const PassingSet*> UpdatePassing(uint32_t place, const RecordValues& values);
    // Acts on those that somebody holds; the others are given up.
    template <typename Action> void ForEachPassing(Action action)
    {
        std::erase_if(m_passing, [&](const std::weak_ptr<PassingSet>& known) {
            const auto passing = known.lock();
            if (passing)
                action(*passing);
            return !passing;
        });
    }
    bool HasColumn(int property) const;
    bool IsBefore(const KnownOrder& order, uint32_t a, uint32_t b);
    bool IsSortedBefore(const KnownOrder& order, uint32_t a, uint32_t b);
    bool IsKeyBefore(const KnownOrder& order, uint32_t a, uint32_t b);
    void SetColumns(uint32_t place, const RecordValues& values, bool isNew);
    void DropOrders(int property);
    template <typename Action> void ForEachOrder(Action action);

    Database& m_database;
    TableId m_table;
    const TableInfo& m_info;
    NameCaches& m_names;
    bool m_loaded = false;
    StoreTrouble m_missingRecords = StoreTrouble::None;
    StoreTrouble m_missingValues = StoreTrouble::None;
    uint64_t m_useCount = 0;
    RecordSet m_records;
    std::vector<uint32_t>
        m_scanOrder; // the places in the order in which they were read, until the first sort
    std::map<int, NumberColumn> m_numbers; // by place in the property list
    std::map<int, Keys> m_keys;
    std::map<int, BlobColumn> m_blobs; // what filters ask for
    EmptyRecordTest m_emptyTest;
    std::unordered_set<uint32_t> m_notEmpty; // places that were asked for and have some property
    std::vector<KnownOrder> m_orders;
    std::vector<std::weak_ptr<PassingSet>> m_passing;
    std::shared_ptr<RowOrder> m_lastOrder; // outlives its cursors, for the next one
};

} // namespace mervane
