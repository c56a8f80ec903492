// What is kept in memory of a table's records: the properties that they are sorted and filtered by, each read
// when it is first needed and brought up to date with the program's own writes.
#pragma once

#include <map>
#include <unordered_set>
#include <vector>

#include "mervane/order/blob_column.h"
#include "mervane/order/key_column.h"
#include "mervane/order/key_source.h"
#include "mervane/order/number_column.h"
#include "mervane/order/record_set.h"
#include "mervane/order/row_filter.h"
#include "mervane/records/empty_record.h"
#include "mervane/records/table_scan.h"

namespace mervane {

// A property is named by its place in the table's list of them.
class TableColumns {
  public:
    TableColumns(Database& database, TableId table, NameCaches& names);

    // Reads them when they are first asked for.
    const RecordSet& Records();
    bool AreRecordsLoaded() const { return m_loaded; }
    // Why not all records are known; None when they are. Only then is one that is not found not there.
    StoreTrouble MissingRecords() const { return m_missingRecords; }
    // The same of the values that are asked for here.
    StoreTrouble MissingValues() const { return m_missingValues; }

    // The properties that are kept of each record; none before the records are needed.
    std::vector<CEPROPID> KeptProperties() const;
    // The new record's place; kNoPlace unless its identifier is the highest. It lacks what is not sent.
    uint32_t Append(CEOID id, const RecordValues& values);
    void Update(uint32_t place, const RecordValues& values);
    void Remove(uint32_t place) { m_records.Remove(place); }
    // What the property's records are sorted by has changed: it is to be read again.
    void DropKeys(int property) { m_keys.erase(property); }

    // The places of the records, sorted by a property: see SortPlaces.
    std::vector<uint32_t> Sorted(int property, bool descending);
    // Whether IsBefore can tell; not where what it goes by had to be dropped.
    bool CanCompare(int property) const;
    bool IsBefore(int property, bool descending, uint32_t a, uint32_t b);

    // Whether a record passes a filter.
    bool Passes(const RowFilter& filter, uint32_t place);
    // The same of all records that are there: action(place, passes).
    template <typename Action> void TestAll(const RowFilter& filter, Action action);

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
    NumberColumn& NumbersOf(int property);
    Keys& KeysOf(int property);
    BlobColumn& BlobsOf(int property);
    void LoadNumbers(int property);
    void LoadKeys(int property);
    void LoadBlobs(int property);
    void KeepWithinLimit(int property);
    void DropGrown();
    bool IsKeyBefore(Keys& keys, bool descending, uint32_t a, uint32_t b);
    bool PassesByNumber(const RowFilter& filter, const NumberColumn& numbers, uint32_t place);
    bool PassesByBlob(const RowFilter& filter, BlobColumn& blobs, uint32_t place);
    bool PassesWithout(const RowFilter& filter, uint32_t place);
    bool IsEmptyRecord(uint32_t place);

    Database& m_database;
    TableId m_table;
    const TableInfo& m_info;
    NameCaches& m_names;
    bool m_loaded = false;
    StoreTrouble m_missingRecords = StoreTrouble::None;
    StoreTrouble m_missingValues = StoreTrouble::None;
    RecordSet m_records;
    // The places in the order in which they were read, until the first sort.
    std::vector<uint32_t> m_scanOrder;
    std::map<int, NumberColumn> m_numbers;
    std::map<int, Keys> m_keys;
    std::map<int, BlobColumn> m_blobs;
    uint64_t m_useCount = 0; // of m_keys
    EmptyRecordTest m_emptyTest;
    std::unordered_set<uint32_t> m_notEmpty; // places that were asked for and have some property
};

// Which column it goes by is settled once.
template <typename Action> void TableColumns::TestAll(const RowFilter& filter, Action action)
{
    const int property = FindProperty(m_info, filter.property);
    const uint32_t places = Records().PlaceCount();
    const auto testAll = [&](auto passes) {
        for (uint32_t place = 0; place < places; ++place)
            if (!m_records.IsRemoved(place))
                action(place, passes(place));
    };
    if (IsNumber(property)) {
        const NumberColumn& numbers = NumbersOf(property);
        testAll([&](uint32_t place) { return PassesByNumber(filter, numbers, place); });
    } else {
        BlobColumn& blobs = BlobsOf(property);
        testAll([&](uint32_t place) { return PassesByBlob(filter, blobs, place); });
    }
}

} // namespace mervane
