#include <sqlite3.h>

#include <algorithm>

#include "data/journal_entry.h"
#include "figures.h"
#include "journal_work.h"
#include "report.h"
#include "sql_watch.h"
#include "stores.h"

namespace bench {

namespace {

constexpr int kSaves = 3000; // enough for the log to be emptied into the file on the way, however it is done

void CountPage()
{
    OpenJournal journal(StorePath(kFull));
    ReadPage(journal, kFull / 2);
    (void)TakeSqlCounts();
    ReadPage(journal, kFull / 2 + 1000);
    const SqlCounts page = TakeSqlCounts();
    PrintCount("a page: read transactions", page.begins, 1);
    PrintCount("a page: locks taken and given back", page.locks, 2);
}

SqlCounts CountSave(CeDBase& journal)
{
    static uint64_t s_date = 133'000'000'000'000'000;
    wchar_t text[] = L"Saved";
    CEPROPVAL date{kPropDate, 0, 0, {}};
    date.val.filetime = TimeCount(++s_date).ToFileTime();
    CEPROPVAL subject{kPropSubject, 0, 0, {}};
    subject.val.lpwstr = text;
    const CEPROPVAL properties[] = {date, subject};
    (void)TakeSqlCounts();
    if (!journal.WriteRecord(0, 2, properties))
        Fail("a record cannot be written");
    return TakeSqlCounts();
}

void CountManySaves(CeDBase& journal)
{
    uint64_t most = 0, others = 0;
    for (int i = 0; i < kSaves; ++i) {
        const uint64_t flushes = CountSave(journal).flushes;
        most = std::max(most, flushes);
        others += flushes != 1;
    }
    PrintCount("of 3,000 saves in a row, those with more or less than one", others);
    PrintCount("of 3,000 saves in a row, the most flushes of one", most);
}

// The first save after the log has been emptied into the file and starts anew.
void CountAfterRestart(CeDBase& journal)
{
    if (sqlite3_exec(NewestConnection(), "PRAGMA wal_checkpoint(RESTART)", nullptr, nullptr, nullptr) !=
        SQLITE_OK)
        Fail("the log cannot be restarted");
    PrintCount("the first save after the log was restarted: flushes", CountSave(journal).flushes);
    PrintCount("the save after that one: flushes", CountSave(journal).flushes, 1);
}

void CountSaves()
{
    const StoreCopy copy(kSmall, L"counted");
    OpenJournal journal(copy.Path());
    PrintCount("the first save of a process: flushes", CountSave(journal).flushes);
    const SqlCounts save = CountSave(journal);
    PrintCount("a save: flushes", save.flushes, 1);
    PrintCount("a save: write transactions", save.begins, 1);
    PrintCount("a save: locks taken and given back", save.locks);
    CountAfterRestart(journal);
    CountManySaves(journal);
}

} // namespace

void CountRequests()
{
    PrintHeading("Requests, counted");
    CountPage();
    CountPaint();
    CountSaves();
}

} // namespace bench
