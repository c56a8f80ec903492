#include "data/journal_entry.h"
#include "figures.h"
#include "journal_work.h"
#include "measure.h"
#include "report.h"
#include "stores.h"
#include "wine_server.h"

namespace bench {

namespace {

constexpr int kPages = 200;

double TimeWalk(CeDBase& journal)
{
    const Stopwatch watch;
    if (WalkAll(journal) != kFull)
        Fail("records are missing");
    return watch.Microseconds();
}

double TimePages(CeDBase& journal)
{
    const Stopwatch watch;
    for (uint32_t page = 0; page < kPages; ++page)
        ReadPage(journal, page * 300);
    return watch.Microseconds() / kPages;
}

double TimeOpeningSort(CEPROPID property)
{
    OpenJournal journal(StorePath(kFull), kPropPriority);
    const Stopwatch watch;
    SortBy(journal, property);
    return watch.Microseconds();
}

// The work with the server on this program's processor and on the other one, by turns.
void Compare(const char* what, double limit, const Timed& work)
{
    const auto on = [&work](int processor) {
        PinServer(processor);
        return work();
    };
    const auto medians = MediansByTurns({[&] { return on(1); }, [&] { return on(0); }});
    PrintRatio(what, medians[0], medians[1], limit);
}

} // namespace

void MeasureServer()
{
    PrintHeading("Wine's server on another processor, to the same one");
    if (!KnowsWineServer()) {
        PrintNote("not measured: no Wine server known");
        return;
    }
    const StoreCopy copy(kFull, L"server");
    OpenJournal journal(copy.Path());
    Compare("a walk over 65,535 records in one read scope", 1.2, [&] { return TimeWalk(journal); });
    Compare("a page of 50 rows (two requests in all)", 0, [&] { return TimePages(journal); });
    Compare("a sort by subject, the first time", 1.2, [] { return TimeOpeningSort(kPropSubject); });
    Compare("a sort by date, the first time", 1.2, [] { return TimeOpeningSort(kPropDate); });
}

} // namespace bench
