#include <algorithm>

#include "bare_sort.h"
#include "data/journal_entry.h"
#include "figures.h"
#include "journal_work.h"
#include "measure.h"
#include "report.h"
#include "stores.h"

namespace bench {

namespace {

double TimeSort(CeDBase& journal, CEPROPID property, DWORD flags = 0)
{
    const Stopwatch watch;
    SortBy(journal, property, flags);
    return watch.Microseconds();
}

// On a store just opened: what a process knows of the column is gone, what the system holds in memory is not.
double TimeFirstSort(uint32_t records, CEPROPID openedIn, CEPROPID property)
{
    OpenJournal journal(StorePath(records), openedIn);
    SortBy(journal, openedIn);
    return TimeSort(journal, property);
}

// By this column again, after a sort by another one.
double TimeSortAgain(CeDBase& journal, CEPROPID between, CEPROPID property)
{
    SortBy(journal, between);
    return TimeSort(journal, property);
}

// The other way round, for the first time.
double TimeOtherDirection(uint32_t records, CEPROPID property)
{
    OpenJournal journal(StorePath(records), property);
    SortBy(journal, property);
    return TimeSort(journal, property, CEDB_SORT_DESCENDING);
}

// Sorting what a plain statement has read of a column.
template <typename Key> class BareSort {
  public:
    using Read = std::vector<Key> (*)(BareStore&, const char*);

    BareSort(BareStore& store, Read read, const char* column)
        : m_store(store), m_read(read), m_column(column), m_ready(read(store, column))
    {}
    double TimeFirst()
    {
        const Stopwatch watch;
        auto keys = m_read(m_store, m_column);
        std::sort(keys.begin(), keys.end());
        return watch.Microseconds();
    }
    double TimeReady()
    {
        auto keys = m_ready;
        const Stopwatch watch;
        std::sort(keys.begin(), keys.end());
        return watch.Microseconds();
    }
    // The product's order must be this one, row by row.
    void Check(CeDBase& journal, CEPROPID property)
    {
        auto keys = m_ready;
        std::sort(keys.begin(), keys.end());
        SortBy(journal, property);
        const CeDBase::ReadScope scope(journal);
        for (uint32_t row = 0; row < keys.size(); ++row)
            if (journal.IdOfRow(row) != keys[row].id)
                Fail("a sort has another order than the bare one");
    }

  private:
    BareStore& m_store;
    Read m_read;
    const char* m_column;
    std::vector<Key> m_ready;
};

struct SortTimes {
    double first, bareFirst, again, bareReady, otherDirection;
};

template <typename Key>
SortTimes MeasureSort(uint32_t records, CEPROPID property, CEPROPID other, CeDBase& journal,
                      BareSort<Key> bare)
{
    bare.Check(journal, property);
    const auto times = MediansByTurns({
        [&] { return TimeFirstSort(records, other, property); },
        [&] { return bare.TimeFirst(); },
        [&] { return TimeSortAgain(journal, other, property); },
        [&] { return bare.TimeReady(); },
        [&] { return TimeOtherDirection(records, property); },
    });
    return {times[0], times[1], times[2], times[3], times[4]};
}

void MeasureSortsOf(uint32_t records, const char* heading)
{
    constexpr double kTextLimit = 1.3, kNumberLimit = 1.5;
    // A file of its own: the databases of one file know each other's orders.
    const StoreCopy copy(records, L"sorted");
    OpenJournal journal(copy.Path());
    BareStore store(StorePath(records));
    const SortTimes text =
        MeasureSort<TextKey>(records, kPropSubject, kPropPriority, journal, {store, ReadTextKeys, "subject"});
    const SortTimes date =
        MeasureSort<NumberKey>(records, kPropDate, kPropPriority, journal, {store, ReadNumberKeys, "date"});
    const SortTimes number = MeasureSort<NumberKey>(records, kPropDuration, kPropSubject, journal,
                                                    {store, ReadNumberKeys, "duration"});
    PrintHeading(heading);
    PrintRatio("by subject, the first time, to keys made and sorted", text.first, text.bareFirst, kTextLimit);
    PrintRatio("by subject, again, to ready keys sorted", text.again, text.bareReady, kTextLimit);
    PrintRatio("by subject, the other direction, to ready keys sorted", text.otherDirection, text.bareReady,
               kTextLimit);
    PrintRatio("by date, the first time, to values read and sorted", date.first, date.bareFirst,
               kNumberLimit);
    PrintRatio("by date, again, to ready values sorted", date.again, date.bareReady, kNumberLimit);
    PrintRatio("by date, the other direction, to ready values sorted", date.otherDirection, date.bareReady,
               kNumberLimit);
    PrintRatio("by duration, the first time, to values read and sorted", number.first, number.bareFirst,
               kNumberLimit);
    PrintRatio("by duration, again, to ready values sorted", number.again, number.bareReady, kNumberLimit);
}

} // namespace

void MeasureSorts()
{
    MeasureSortsOf(kFull, "A sort of 65,535 entries");
    MeasureSortsOf(kMiddle, "A sort of 10,000 entries");
    MeasureSortsOf(kSmall, "A sort of 1,000 entries");
}

} // namespace bench
