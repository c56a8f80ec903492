#include <sqlite3.h>

#include <deque>
#include <span>
#include <vector>

#include "bare_store.h"
#include "data/journal_entry.h"
#include "figures.h"
#include "journal_work.h"
#include "list/list_rows.h"
#include "measure.h"
#include "mervane/db_categories.h"
#include "report.h"
#include "stores.h"

namespace bench {

namespace {

FilterState MonthFilter()
{
    FilterState filter;
    filter.active = true;
    filter.monthMask = 0x124; // March, June and September
    return filter;
}

// Ten of the sample's forty years.
FilterState RangeFilter()
{
    FilterState filter;
    filter.active = filter.rangeMode = true;
    filter.rangeStart = {2000, 3, 0, 10, 0, 0, 0, 0};
    filter.rangeEnd = {2010, 3, 0, 9, 0, 0, 0, 0};
    return filter;
}

FilterState CategoryFilter()
{
    FilterState filter;
    filter.active = filter.categoriesMode = true;
    DbCategories categories;
    if (!categories.Open())
        Fail("cannot open the categories");
    const CeDBase::ReadScope scope(categories);
    for (const uint32_t row : {1u, 4u})
        filter.categories.Push({categories.IdOfRow(row), 0});
    return filter;
}

const char* ColumnOf(const FilterState& filter)
{
    return filter.categoriesMode ? "categories" : "date";
}

// The property that a filter tests, of a statement's row; none where the row lacks it.
std::optional<CEPROPVAL> ValueOf(sqlite3_stmt* row, int column, CEPROPID property)
{
    if (sqlite3_column_type(row, column) == SQLITE_NULL)
        return std::nullopt;
    CEPROPVAL value{};
    value.propid = property;
    if (PropertyType(property) == CEVT_BLOB)
        value.val.blob = {static_cast<DWORD>(sqlite3_column_bytes(row, column)),
                          static_cast<BYTE*>(const_cast<void*>(sqlite3_column_blob(row, column)))};
    else
        value.val.filetime = TimeCount(static_cast<uint64_t>(sqlite3_column_int64(row, column))).ToFileTime();
    return value;
}

// What a filter cannot do without, by one statement that reads the column and tests it as it steps.
class BareQuery {
  public:
    BareQuery(BareStore& store, const FilterState& filter)
        : m_test(filter),
          m_statement(store, (std::string("SELECT oid, ") + ColumnOf(filter) + " FROM journal").c_str())
    {}
    std::vector<CEOID> Run() const
    {
        std::vector<CEOID> ids;
        while (sqlite3_step(m_statement.Get()) == SQLITE_ROW) {
            const auto value = ValueOf(m_statement.Get(), 1, m_test.Property());
            if (m_test.Passes(value ? &*value : nullptr))
                ids.push_back(static_cast<CEOID>(sqlite3_column_int64(m_statement.Get(), 0)));
        }
        sqlite3_reset(m_statement.Get());
        return ids;
    }
    double Time() const
    {
        const Stopwatch watch;
        (void)Run();
        return watch.Microseconds();
    }

  private:
    FilterTest m_test;
    BareStatement m_statement;
};

// The same test over values that are in memory already.
class BareTest {
  public:
    BareTest(BareStore& store, const FilterState& filter) : m_test(filter)
    {
        const BareStatement statement(
            store, (std::string("SELECT oid, ") + ColumnOf(filter) + " FROM journal").c_str());
        while (sqlite3_step(statement.Get()) == SQLITE_ROW)
            Keep(static_cast<CEOID>(sqlite3_column_int64(statement.Get(), 0)),
                 ValueOf(statement.Get(), 1, m_test.Property()));
    }
    double Time() const
    {
        const Stopwatch watch;
        std::vector<CEOID> ids;
        for (const auto& [id, value] : m_values)
            if (m_test.Passes(value ? &*value : nullptr))
                ids.push_back(id);
        return watch.Microseconds();
    }

  private:
    void Keep(CEOID id, std::optional<CEPROPVAL> value)
    {
        if (value && PropertyType(value->propid) == CEVT_BLOB) {
            CEBLOB& blob = value->val.blob;
            blob.lpb = m_blobs.emplace_back(blob.lpb, blob.lpb + blob.dwCount).data();
        }
        m_values.emplace_back(id, value);
    }

    FilterTest m_test;
    std::deque<std::vector<BYTE>> m_blobs;
    std::vector<std::pair<CEOID, std::optional<CEPROPVAL>>> m_values;
};

// Until the list could be told its rows and show the first ones.
double TimeFilter(DbJournal& journal, const FilterState& filter)
{
    journal.ClearRowFilter();
    (void)journal.PassingRows();
    const Stopwatch watch;
    FilteredRows().Apply(journal, filter);
    const uint32_t rows = journal.PassingRows();
    if (!rows || !journal.IdOfRow(0) || !journal.IdOfRow(rows - 1))
        Fail("nothing passes the filter");
    return watch.Microseconds();
}

// On a store just opened, whose list was shown: the dates are there, the categories are not.
double TimeFirstFilter(uint32_t records, const FilterState& filter)
{
    OpenJournal journal(StorePath(records));
    SortBy(journal, kPropDate);
    return TimeFilter(journal, filter);
}

// The rows must be what the bare query finds, in the journal's order.
void Check(DbJournal& journal, const FilterState& filter, const BareQuery& query)
{
    std::vector<CEOID> expected = query.Run();
    journal.ClearRowFilter();
    const CeDBase::ReadScope scope(journal);
    std::sort(expected.begin(), expected.end(),
              [&](CEOID a, CEOID b) { return journal.RowOf(a) < journal.RowOf(b); });
    FilteredRows().Apply(journal, filter);
    if (journal.PassingRows() != expected.size() || expected.size() < journal.RecordCount() / 50)
        Fail("a filter passes another number of entries than the bare query finds");
    for (uint32_t row = 0; row < expected.size(); ++row)
        if (journal.IdOfRow(row) != expected[row])
            Fail("a row under a filter is another entry than the bare query says");
}

struct FilterTimes {
    double first, again, bareQuery, bareTest;
};

// The filter's test looks for the categories in the store that the environment names.
double TimeFilterAgain(const StoreCopy& copy, DbJournal& journal, const FilterState& filter)
{
    SetEnvironmentVariableW(L"MERVANE_STORE", copy.Path().c_str());
    return TimeFilter(journal, filter);
}

FilterTimes Measure(uint32_t records, const StoreCopy& copy, const FilterState& filter)
{
    OpenJournal journal(copy.Path());
    BareStore store(StorePath(records));
    const BareQuery query(store, filter);
    const BareTest test(store, filter);
    Check(journal, filter, query);
    const auto times = MediansByTurns({
        [&] { return TimeFirstFilter(records, filter); },
        [&] { return TimeFilterAgain(copy, journal, filter); },
        [&] { return query.Time(); },
        [&] { return test.Time(); },
    });
    return {times[0], times[1], times[2], times[3]};
}

void Print(const std::string& name, const FilterTimes& times)
{
    constexpr double kQueryLimit = 1.2;
    PrintRatio((name + ", the first time, to the bare query").c_str(), times.first, times.bareQuery,
               kQueryLimit);
    PrintRatio((name + ", again, to the bare query").c_str(), times.again, times.bareQuery, kQueryLimit);
    PrintRatio((name + ", again, to the test in memory").c_str(), times.again, times.bareTest, 0);
}

struct NamedFilter {
    const char* name;
    FilterState filter;
};

std::vector<FilterTimes> MeasureFiltersOf(uint32_t records, const char* heading)
{
    // A file of its own: the databases of one file share what they keep in memory.
    const StoreCopy copy(records, L"filtered");
    const OpenJournal keepsOpen(copy.Path());
    std::vector<FilterTimes> times;
    PrintHeading(heading);
    for (const auto& [name, filter] :
         {NamedFilter{"by months", MonthFilter()}, NamedFilter{"by a range", RangeFilter()},
          NamedFilter{"by categories", CategoryFilter()}}) {
        times.push_back(Measure(records, copy, filter));
        Print(name, times.back());
    }
    return times;
}

} // namespace

void MeasureFilters()
{
    constexpr double kLinearLimit = 8.5;
    const auto full = MeasureFiltersOf(kFull, "A filter over 65,535 entries, with the new row order");
    const auto middle = MeasureFiltersOf(kMiddle, "A filter over 10,000 entries, with the new row order");
    PrintHeading("A filter over 65,535 entries to one over 10,000");
    constexpr const char* kNames[] = {"by months", "by a range", "by categories"};
    for (size_t i = 0; i < full.size(); ++i) {
        PrintRatio((std::string(kNames[i]) + ", the first time").c_str(), full[i].first, middle[i].first,
                   kLinearLimit);
        PrintRatio((std::string(kNames[i]) + ", again").c_str(), full[i].again, middle[i].again,
                   kLinearLimit);
    }
}

} // namespace bench
