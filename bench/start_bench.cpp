#include "app/main_window.h"
#include "bench_window.h"
#include "figures.h"
#include "measure.h"
#include "report.h"
#include "started_program.h"
#include "stores.h"
#include "wine_server.h"

namespace bench {

namespace {

double TimeJournal(uint32_t rows)
{
    SetEnvironmentVariableW(L"MERVANE_STORE", StorePath(rows).c_str());
    return StartedProgram(L"..\\bin\\journal.exe", L"", {kMainWindowClass, static_cast<int>(rows)})
        .MicrosecondsToPaint();
}

double TimeEmptyWindow(const wchar_t* arguments)
{
    return StartedProgram(L"empty_window.exe", arguments, {kEmptyWindowClass}).MicrosecondsToPaint();
}

void Measure(const char* heading)
{
    const auto times = MediansByTurns({
        [] { return TimeJournal(kFull); },
        [] { return TimeJournal(kMiddle); },
        [] { return TimeJournal(kSmall); },
        [] { return TimeEmptyWindow(L""); },
        [] { return TimeEmptyWindow(L"controls"); },
        [] { return TimeEmptyWindow(L"bars"); },
    });
    PrintHeading(heading);
    PrintRatio("65,535 entries, to an empty window", times[0], times[3], 1.5);
    PrintRatio("1,000 entries, to an empty window", times[2], times[3], 1.5);
    PrintRatio("65,535 entries, to one with the controls' library", times[0], times[4], 0);
    PrintRatio("65,535 entries, to one with the same bars and list", times[0], times[5], 0);
    PrintRatio("1,000 entries, to one with the same bars and list", times[2], times[5], 0);
    PrintRatio("10,000 entries to 1,000", times[1], times[2], 1.15);
    PrintRatio("65,535 entries to 1,000", times[0], times[2], 1.15);
}

} // namespace

void MeasureStarts()
{
    if (!KnowsWineServer()) {
        Measure("From the start of the program to the first painted list");
        return;
    }
    Measure("Start to first painted list, Wine's server on one processor");
    PinServer(1);
    Measure("The same, Wine's server on another processor");
}

} // namespace bench
