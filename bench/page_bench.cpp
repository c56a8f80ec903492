#include <sqlite3.h>

#include <vector>

#include "bare_store.h"
#include "figures.h"
#include "journal_work.h"
#include "measure.h"
#include "report.h"
#include "stores.h"

namespace bench {

namespace {

constexpr uint32_t kPages = 20; // pages in a row, each another: 1,000 records, as many as the small store has

// Rows as the oracle has them: a page's time says nothing when the page is the wrong one.
void CheckRows(CeDBase& journal, BareStore& store)
{
    const BareStatement statement(store, "SELECT oid FROM journal ORDER BY date IS NULL, date, oid");
    const CeDBase::ReadScope scope(journal);
    uint32_t row = 0;
    for (; sqlite3_step(statement.Get()) == SQLITE_ROW; ++row)
        if (journal.IdOfRow(row) != static_cast<CEOID>(sqlite3_column_int64(statement.Get(), 0)))
            Fail("a row is another record than SQLite's order says");
    if (row != journal.RecordCount())
        Fail("records are missing");
}

double TimePages(CeDBase& journal, uint32_t firstRow)
{
    const Stopwatch watch;
    for (uint32_t page = 0; page < kPages; ++page)
        bench::ReadPage(journal, firstRow + page * kPageRows);
    return watch.Microseconds() / kPages;
}

// All columns of one record, each in the form that the program needs: texts in UTF-16.
void FetchRow(sqlite3_stmt* statement)
{
    const int columns = sqlite3_column_count(statement);
    for (int column = 0; column < columns; ++column) {
        switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER: (void)sqlite3_column_int64(statement, column); break;
        case SQLITE_TEXT: (void)sqlite3_column_text16(statement, column); break;
        case SQLITE_BLOB: (void)sqlite3_column_blob(statement, column); break;
        default: break;
        }
    }
}

// The same without a change of encoding.
void FetchRowUtf8(sqlite3_stmt* statement)
{
    const int columns = sqlite3_column_count(statement);
    for (int column = 0; column < columns; ++column) {
        switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER: (void)sqlite3_column_int64(statement, column); break;
        case SQLITE_TEXT: (void)sqlite3_column_text(statement, column); break;
        case SQLITE_BLOB: (void)sqlite3_column_blob(statement, column); break;
        default: break;
        }
    }
}

constexpr const char* kSelect =
    "SELECT date, subject, body, categories, type, kind, priority, sensitivity, end_time, "
    "duration, contacts FROM journal WHERE oid = ?";

class BarePages {
  public:
    BarePages(const std::wstring& path, CeDBase& journal, uint32_t firstRow)
        : m_store(path), m_statement(m_store, kSelect)
    {
        for (uint32_t row = 0; row < kPages * kPageRows; ++row)
            m_ids.push_back(journal.IdOfRow(firstRow + row));
    }
    BareStore& Store() { return m_store; }
    double Time(void (*fetch)(sqlite3_stmt*))
    {
        const Stopwatch watch;
        for (uint32_t page = 0; page < kPages; ++page)
            ReadPage(m_ids.data() + size_t{page} * kPageRows, fetch);
        return watch.Microseconds() / kPages;
    }

  private:
    void ReadPage(const CEOID* ids, void (*fetch)(sqlite3_stmt*))
    {
        m_store.Execute("BEGIN");
        for (uint32_t i = 0; i < kPageRows; ++i) {
            sqlite3_bind_int64(m_statement.Get(), 1, ids[i]);
            if (sqlite3_step(m_statement.Get()) != SQLITE_ROW)
                Fail("SQLite cannot read a record");
            fetch(m_statement.Get());
            sqlite3_reset(m_statement.Get());
        }
        m_store.Execute("COMMIT");
    }

    BareStore m_store;
    BareStatement m_statement;
    std::vector<CEOID> m_ids;
};

} // namespace

void MeasurePages()
{
    OpenJournal small(StorePath(kSmall));
    OpenJournal middle(StorePath(kMiddle));
    OpenJournal full(StorePath(kFull));
    constexpr uint32_t kLast = kFull - kPages * kPageRows;
    BarePages bareMiddle(StorePath(kFull), full, kFull / 2);
    CheckRows(full, bareMiddle.Store());
    const auto medians = MediansByTurns({
        [&] { return TimePages(full, 0); },
        [&] { return TimePages(full, kLast); },
        [&] { return TimePages(full, kFull / 2); },
        [&] { return TimePages(small, 0); },
        [&] { return bareMiddle.Time(FetchRow); },
        [&] { return bareMiddle.Time(FetchRowUtf8); },
        [&] { return TimePages(middle, kMiddle / 2); },
    });
    PrintHeading("A page of 50 rows (SeekRow, 50 x ReadRecord and SeekNext)");
    PrintRatio("65,535 entries: last pages to first pages", medians[1], medians[0], 1.2);
    PrintRatio("middle of 65,535 entries to 1,000 entries", medians[2], medians[3], 1.2);
    PrintRatio("middle of 10,000 entries to 1,000 entries", medians[6], medians[3], 1.2);
    PrintRatio("to one bare statement in one transaction", medians[2], medians[4], 1.5);
    PrintRatio("the same, the bare statement leaving UTF-8 as it is", medians[2], medians[5], 0);
}

} // namespace bench
