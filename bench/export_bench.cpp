#include <windows.h>

#include <algorithm>

#include "export/export_dialog.h"
#include "export/export_fields.h"
#include "export/export_job.h"
#include "figures.h"
#include "measure.h"
#include "report.h"
#include "res/resource.h"
#include "stores.h"
#include "ui/screen/work_area.h"
#include "written_pieces.h"

namespace bench {

namespace {

constexpr uint32_t kTurn = 5; // entries
constexpr double kLimit = 1.05;
constexpr uint32_t kFew = 100;
constexpr SORTORDERSPEC kByDate{kPropDate, 0};

// One export: its store, its request, and the pieces that it writes.
class Export {
  public:
    Export(uint32_t storeCount, ExportFormat format) : m_store(StorePath(storeCount))
    {
        Use();
        m_settings.Open(kRegistryPath);
        ResetColumns(&m_columns, WorkArea().right);
        ChooseAllFields(&m_columns);
        m_request.path = m_store + L"-export";
        m_request.format = format;
        m_request.columns = &m_columns;
        m_request.filter = &m_filter;
    }
    // Of the store's entries only so many, spread over all of it.
    void Select(uint32_t count)
    {
        Use();
        const OpenJournal journal(m_store);
        OpenJournal rows(m_store);
        const uint32_t all = ExportJob(m_request, kByDate).EntryCount();
        for (uint32_t i = 0; i < count; ++i)
            m_request.selection.push_back(rows.IdOfRow(i * (all / count)));
        m_request.scope = ExportScope::Selected;
    }
    void KeepPieces()
    {
        Use();
        const OpenJournal journal(m_store); // the store's own calls are made before
        const CallsNotMade calls(&m_written.pieces);
        ExportJob job(m_request, kByDate);
        job.Run([this](uint32_t) {
            m_written.entryEnds.push_back(m_written.pieces.size());
            return true;
        });
    }
    // All but the calls, for one piece.
    double TimeWithoutCalls()
    {
        Use();
        const OpenJournal journal(m_store);
        const CallsNotMade calls(nullptr);
        const Stopwatch watch;
        ExportJob(m_request, kByDate).Run([](uint32_t) { return true; });
        return watch.Microseconds() / static_cast<double>(m_written.pieces.size());
    }
    // The export and the bare calls for the same pieces, by turns of some entries; which of them comes first
    // changes from turn to turn. The medians of the turns.
    void TimeBoth(double* measured, double* against)
    {
        Use();
        BareFile bare(m_request.path + L"-bare");
        std::vector<double> exports, bares;
        {
            ExportJob job(m_request, kByDate);
            Stopwatch watch;
            job.Run([&](uint32_t count) {
                if (count % kTurn && count != m_written.entryEnds.size())
                    return true;
                exports.push_back(watch.Microseconds());
                while (bares.size() < exports.size() + exports.size() % 2 && bares.size() < TurnCount())
                    bares.push_back(TimeTurn(bare, bares.size()));
                watch = {};
                return true;
            });
        }
        Check();
        *measured = Median(exports);
        *against = Median(bares);
    }
    double TimeBare()
    {
        BareFile bare(m_request.path + L"-bare");
        return bare.TimePieces(m_written.pieces, 0, m_written.pieces.size());
    }
    double TimeDialog();
    ~Export() { DeleteFileW(m_request.path.c_str()); }
    Export(const Export&) = delete;
    Export& operator=(const Export&) = delete;

  private:
    size_t TurnCount() const { return (m_written.entryEnds.size() + kTurn - 1) / kTurn; }
    double TimeTurn(BareFile& bare, size_t turn)
    {
        const std::vector<size_t>& ends = m_written.entryEnds;
        const size_t from = turn ? ends[turn * kTurn - 1] : 0;
        return bare.TimePieces(m_written.pieces, from, ends[std::min((turn + 1) * kTurn, ends.size()) - 1]);
    }
    void Use() const { SetEnvironmentVariableW(L"MERVANE_STORE", m_store.c_str()); }
    // What was exported is what the bare calls write.
    void Check() const
    {
        uint64_t bytes = 0;
        for (const std::string& piece : m_written.pieces)
            bytes += piece.size();
        WIN32_FILE_ATTRIBUTE_DATA data{};
        if (!GetFileAttributesExW(m_request.path.c_str(), GetFileExInfoStandard, &data) ||
            (uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow) != bytes)
            Fail("an export is not whole");
    }

    std::wstring m_store;
    ColumnSet m_columns;
    RegistryStore m_settings;
    DbJournal m_journal;
    FilterState m_filter;
    ExportRequest m_request;
    WrittenPieces m_written;
};

// The user in front of the dialog: presses OK, and OK again when it tells that it has finished.
struct DialogTurn {
    double started = 0;
    double ended = 0;
};
DialogTurn g_turn;

BOOL CALLBACK FindDialog(HWND window, LPARAM found)
{
    if (GetDlgItem(window, IDC_EXPORT_FIELDS) && IsWindowVisible(window))
        *reinterpret_cast<HWND*>(found) = window;
    return TRUE;
}

void CALLBACK WorkDialog(HWND, UINT, UINT_PTR, DWORD)
{
    if (HWND box = FindWindowW(nullptr, L"Export Completed")) {
        if (g_turn.ended == 0)
            g_turn.ended = NowMicroseconds();
        PostMessageW(box, WM_COMMAND, IDOK, 0);
        return;
    }
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&dialog));
    if (!dialog || g_turn.started != 0)
        return;
    CheckRadioButton(dialog, IDC_EXPORT_ALL, IDC_EXPORT_FILTERED, IDC_EXPORT_SELECTED);
    g_turn.started = NowMicroseconds();
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

double Export::TimeDialog()
{
    Use();
    constexpr UINT kPeriod = 10;
    const OpenJournal journal(m_store);
    SelectionSet selection;
    for (const CEOID id : m_request.selection)
        selection.Append(id);
    DeleteFileW(m_request.path.c_str()); // to write over what is there is quicker than to write it anew
    g_turn = {};
    const UINT_PTR timer = SetTimer(nullptr, 0, kPeriod, WorkDialog);
    RunExportDialog(nullptr, m_request.path, m_request.format,
                    {m_columns, selection, {m_settings, m_journal, m_filter}});
    KillTimer(nullptr, timer);
    if (g_turn.ended == 0)
        Fail("the Export dialog did not come to its end");
    return g_turn.ended - g_turn.started;
}

void MeasureOne(const char* what, Export& work)
{
    double measured = 0, against = 0;
    work.TimeBoth(&measured, &against);
    PrintRatio(what, measured, against, kLimit);
}

} // namespace

void MeasureExports()
{
    PrintHeading("Export, to the bare writes and flushes");
    Export small(kSmall, ExportFormat::CommaSeparated), middle(kMiddle, ExportFormat::CommaSeparated),
        full(kFull, ExportFormat::CommaSeparated), few(kSmall, ExportFormat::CommaSeparated);
    full.Select(kSmall);
    few.Select(kFew);
    for (Export* work : {&small, &middle, &full, &few})
        work->KeepPieces();
    const auto besides =
        MediansByTurns({[&] { return middle.TimeWithoutCalls(); }, [&] { return small.TimeWithoutCalls(); },
                        [&] { return full.TimeWithoutCalls(); }});
    PrintRatio("all but the calls for a piece, 10,000 entries to 1,000", besides[0], besides[1], 1.2);
    PrintRatio("the same, 1,000 selected of 65,535 to 1,000", besides[2], besides[1], 1.5);
    const auto dialog = MediansByTurns({[&] { return few.TimeDialog(); }, [&] { return few.TimeBare(); }});
    PrintRatio("100 entries, from OK to the dialog's end", dialog[0], dialog[1], kLimit);
    MeasureOne("1,000 entries", small);
    MeasureOne("1,000 selected of 65,535 entries", full);
    MeasureOne("10,000 entries", middle);
}

} // namespace bench
