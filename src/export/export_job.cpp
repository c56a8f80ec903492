#include "export/export_job.h"

#include "export/csv_rows.h"
#include "export/entry_text.h"

ExportJob::ExportJob(const ExportRequest& request, const SORTORDERSPEC& sort)
    : m_request(request), m_file(request.path),
      m_test(request.scope == ExportScope::Filtered ? *request.filter : FilterState())
{
    (void)m_journal.Open(nullptr, sort);
    Note(m_journal.Trouble());
}

uint32_t ExportJob::EntryCount()
{
    return m_request.scope == ExportScope::Selected ? static_cast<uint32_t>(m_request.selection.size())
                                                    : m_journal.PassingRows();
}

uint32_t ExportJob::Run(const std::function<bool(uint32_t)>& afterEntry)
{
    if (m_request.format == ExportFormat::CommaSeparated && m_request.headerOrLabels)
        WriteHeaderRow(*m_request.columns, m_file);
    uint32_t count = 0;
    for (bool goesOn = true; goesOn;) {
        bool isExported = false;
        {
            const CeDBase::ReadScope scope(m_journal);
            if (!Seek())
                break;
            isExported = ExportCurrent();
        }
        if (isExported)
            goesOn = afterEntry(++count);
    }
    return count;
}

bool ExportJob::Seek()
{
    if (m_request.scope == ExportScope::Selected)
        return SeekSelected();
    const bool begun = m_begun;
    m_begun = true;
    const bool isThere = (begun ? m_journal.SeekNextRecord() : m_journal.SeekFirstRecord()) != 0;
    Note(m_journal.Trouble());
    return isThere;
}

bool ExportJob::SeekSelected()
{
    while (m_nextSelected < m_request.selection.size()) {
        const CEOID id = m_request.selection[m_nextSelected++];
        if (m_journal.SeekRecord(id) == id)
            return true;
        Note(m_journal.Trouble());
    }
    return false;
}

bool ExportJob::ExportCurrent()
{
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    const CEOID id = m_journal.ReadRecord(&count, nullptr, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    Note(m_journal.Trouble());
    if (!id)
        return false;
    if (PassesFilter(m_test, count, properties))
        Write({count, properties});
    return true;
}

void ExportJob::Write(const ExportedRecord& entry)
{
    if (m_request.format == ExportFormat::SimpleText)
        WriteEntryText(entry, m_request.headerOrLabels, m_texts, m_file);
    else
        WriteEntryRow(*m_request.columns, entry, m_texts, m_file);
    Note(m_texts.Trouble());
}

void ExportJob::Note(StoreTrouble trouble)
{
    if (m_trouble == StoreTrouble::None)
        m_trouble = trouble;
}
