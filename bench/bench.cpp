// What the figures of docs/bench.md are measured with: bench.exe FOLDER FIGURE... with the stores in FOLDER.
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <iterator>

#include "app/main_window.h"
#include "figures.h"
#include "sql_watch.h"
#include "started_program.h"
#include "stores.h"
#include "wine_server.h"

namespace {

struct Figure {
    const wchar_t* name;
    void (*prepare)();
    void (*measure)();
};

bench::Awaited JournalWith(const wchar_t* rows)
{
    return {kMainWindowClass, static_cast<int>(wcstol(rows, nullptr, 10))};
}

void ClickSecondColumn(HWND window)
{
    constexpr int kInside = 20;
    HWND list = FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr);
    HWND header = FindWindowExW(list, nullptr, WC_HEADERW, nullptr);
    const LPARAM place = MAKELPARAM(ListView_GetColumnWidth(list, 0) + kInside, kInside / 2);
    SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, place);
    SendMessageW(header, WM_LBUTTONUP, 0, place); // comes back when the list is sorted
}

// What run.sh asks for while it looks at a running journal from its side.
int WorkJournal(const wchar_t* what, HWND window)
{
    if (wcscmp(what, L"sort") == 0)
        ClickSecondColumn(window);
    if (wcscmp(what, L"close") == 0)
        PostMessageW(window, WM_CLOSE, 0, 0);
    return 0;
}

void MakeStoresOrFail()
{
    if (!bench::MakeStores())
        bench::Fail("cannot make the stores");
}

void MeasurePagesAndCache()
{
    bench::MeasurePages();
    bench::MeasureCache();
}

constexpr Figure kFigures[] = {
    {L"stores", nullptr, MakeStoresOrFail},
    {L"start", nullptr, bench::MeasureStarts},
    {L"page", bench::RememberConnections, MeasurePagesAndCache},
    {L"count", bench::CountSql, bench::CountRequests},
    {L"server", bench::RememberConnections, bench::MeasureServer},
    {L"sort", bench::RememberConnections, bench::MeasureSorts},
    {L"filter", bench::RememberConnections, bench::MeasureFilters},
    {L"find", bench::RememberConnections, bench::MeasureFinds},
    {L"save", bench::RememberConnections, bench::MeasureSaves},
    {L"assign", nullptr, bench::MeasureAssign},
    {L"import", bench::RememberConnections, bench::MeasureImports},
    {L"export", nullptr, bench::MeasureExports},
};

int Measure(const wchar_t* name)
{
    for (const Figure& figure : kFigures) {
        if (wcscmp(figure.name, name) != 0)
            continue;
        if (figure.prepare)
            figure.prepare();
        // Where the system puts Wine's server changes every figure, so it has one place unless a figure moves
        // it.
        if (bench::KnowsWineServer())
            bench::PinServer(0);
        figure.measure();
        return 0;
    }
    fprintf(stderr, "bench: no such figure\n");
    return 1;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc == 4)
        return WorkJournal(argv[2], bench::WaitUntilPainted(JournalWith(argv[3])));
    if (argc != 3) {
        fprintf(stderr, "use: bench FOLDER FIGURE, or FOLDER wait|sort|close ROWS\n");
        return 1;
    }
    bench::SetFolder(argv[1]);
    return Measure(argv[2]);
}
