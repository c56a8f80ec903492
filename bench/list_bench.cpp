#include <memory>

#include "figures.h"
#include "list/display_cache.h"
#include "list/entry_list.h"
#include "measure.h"
#include "report.h"
#include "settings/registry_store.h"
#include "sql_watch.h"
#include "stores.h"

namespace bench {

namespace {

constexpr int kRows = 50;
constexpr int kPages = 20;
constexpr int kWidth = 1000, kHeight = 700;

EntryList* g_list = nullptr;

// What the main window does for its list.
LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NOTIFY && g_list)
        return g_list->OnNotify(reinterpret_cast<NMHDR*>(lParam));
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND CreateParent()
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = ParentProcedure;
    windowClass.lpszClassName = L"BenchListParent";
    RegisterClassW(&windowClass);
    HWND parent = CreateWindowExW(0, L"BenchListParent", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, kWidth,
                                  kHeight, nullptr, nullptr, nullptr, nullptr);
    if (!parent)
        Fail("a window cannot be created");
    return parent;
}

// The cache of a list over a store of so many records.
struct Pages {
    explicit Pages(uint32_t count) : path(StorePath(count)), journal(path), cache(journal, rowCount)
    {
        rowCount = count;
        (void)journal.IdOfRow(0);
    }
    double Time(int firstRow)
    {
        // The names of categories and contacts are looked up in the store that is the program's.
        SetEnvironmentVariableW(L"MERVANE_STORE", path.c_str());
        const Stopwatch watch;
        for (int page = 0; page < kPages; ++page) {
            cache.Clear();
            const int row = firstRow + page * kRows;
            cache.OnHint(row, row + kRows - 1, kRows);
        }
        return watch.Microseconds() / kPages;
    }

    std::wstring path;
    OpenJournal journal;
    DWORD rowCount = 0;
    DisplayCache cache;
};

} // namespace

void CountPaint()
{
    SetEnvironmentVariableW(L"MERVANE_STORE", StorePath(kFull).c_str());
    HWND parent = CreateParent();
    ColumnSet columns;
    RegistryStore settings;
    settings.Open(kRegistryPath);
    DbJournal journal;
    FilterState filter;
    EntryList list{{settings, journal, filter}};
    g_list = &list;
    if (!journal.Open(parent) || !list.Create(parent, &columns, LVS_REPORT | LVS_SHOWSELALWAYS, 0))
        Fail("the list cannot be created");
    UpdateWindow(list.Handle());
    (void)TakeSqlCounts();
    ListView_EnsureVisible(list.Handle(), static_cast<int>(kFull / 2), FALSE);
    UpdateWindow(list.Handle());
    PrintCount("the list painted elsewhere: read transactions", TakeSqlCounts().begins, 1);
    InvalidateRect(list.Handle(), nullptr, TRUE);
    UpdateWindow(list.Handle());
    PrintCount("the same page painted again: statements", TakeSqlCounts().statements, 0);
    g_list = nullptr;
    DestroyWindow(parent);
    journal.Close();
}

void MeasureCache()
{
    Pages small(kSmall), full(kFull);
    constexpr int kLast = kFull - (kPages + 1) * kRows;
    const auto medians = MediansByTurns({
        [&] { return full.Time(0); },
        [&] { return full.Time(kLast); },
        [&] { return full.Time(kFull / 2); },
        [&] { return small.Time(0); },
    });
    PrintHeading("A page of 50 rows, formatted in the list's cache");
    PrintRatio("65,535 entries: last pages to first pages", medians[1], medians[0], 1.2);
    PrintRatio("middle of 65,535 entries to 1,000 entries", medians[2], medians[3], 1.2);
}

} // namespace bench
