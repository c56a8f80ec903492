// ExportJob: writes the entries of a scope to a file. Knows no window.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "columns/column_set.h"
#include "data/value_texts.h"
#include "export/exported_record.h"
#include "export/piece_writer.h"
#include "filter/passes_filter.h"
#include "mervane/db_journal.h"

enum class ExportFormat { CommaSeparated, SimpleText };
enum class ExportScope { All, Selected, Filtered };

struct ExportRequest {
    std::wstring path;
    ExportFormat format = ExportFormat::CommaSeparated;
    ExportScope scope = ExportScope::All;
    bool headerOrLabels = true;
    std::vector<CEOID> selection;        // in the order of selecting
    const ColumnSet* columns = nullptr;  // borrowed; the fields are those chosen for export
    const FilterState* filter = nullptr; // borrowed
};

class ExportJob {
  public:
    // Opens the file and the journal, in the given sort. While the job lives the file is at work; it is cut
    // and closed with it. A file or a journal that cannot be opened is not reported. request outlives the
    // job.
    ExportJob(const ExportRequest& request, const SORTORDERSPEC& sort);

    // How many entries Run will come to: those of the journal, or the selected ones.
    uint32_t EntryCount();
    // Writes everything and returns how many entries were written or, with a filter, looked at. One that is
    // gone or cannot be read is passed over. afterEntry gets the count so far after each entry, with nothing
    // of the next one read or written; false ends the export there.
    uint32_t Run(const std::function<bool(uint32_t count)>& afterEntry);
    // Why entries, or their categories and contacts, are missing that could not be read; None when none are.
    StoreTrouble Trouble() const { return m_trouble; }

  private:
    // Makes the next entry of the scope the current record; false at the end.
    bool Seek();
    bool SeekSelected();
    // False when there was no such entry.
    bool ExportCurrent();
    void Write(const ExportedRecord& entry);
    void Note(StoreTrouble trouble);

    const ExportRequest& m_request;
    PieceWriter m_file;
    FilterTest m_test; // passes everything unless the scope is what the filter passes
    // A walk of its own: what the list shows meanwhile moves the position in its journal.
    DbJournal m_journal;
    ValueTexts m_texts;
    StoreTrouble m_trouble = StoreTrouble::None;
    bool m_begun = false;
    size_t m_nextSelected = 0;
};
