#include "addrbook/export_job.h"

#include "addrbook/contact_uids.h"
#include "addrbook/count_text.h"
#include "addrbook/vcard_contact.h"

namespace addrbook {

namespace {

constexpr size_t kBlockBytes = size_t{64} << 10; // written at once, about

} // namespace

const wchar_t* ReasonOf(DWORD error)
{
    switch (error) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return L": the disk is full.";
    case ERROR_SHARING_VIOLATION: return L": another program has it open.";
    default: return L".";
    }
}

ExportJob::ExportJob(DbContacts& contacts, std::vector<CEOID> ids, const std::wstring& path)
    : m_contacts(contacts), m_ids(std::move(ids)), m_path(path), m_isOpen(m_file.Open(path))
{}

// A store that cannot be written is exported all the same: a UID that would be another one each time is none.
void ExportJob::Name(CEOID id, Contact* contact)
{
    std::string& extra = (*contact)[Field::Extra];
    const std::string line = m_canName && UidOf(extra).empty() ? NewUidLine() : std::string();
    if (line.empty())
        return;
    if (!m_bulk)
        m_bulk.emplace(m_contacts);
    const std::string named = extra + (extra.empty() ? "" : "\n") + line;
    m_canName = SaveField(m_contacts, id, Field::Extra, named);
    if (m_canName)
        extra = named;
}

void ExportJob::AppendCards(std::string* cards)
{
    const CeDBase::ReadScope scope(m_contacts);
    for (Contact contact; m_next < m_ids.size() && cards->size() < kBlockBytes; ++m_next) {
        if (!LoadContact(m_contacts, m_ids[m_next], &contact))
            continue;
        Name(m_ids[m_next], &contact);
        AppendCard(*cards, contact);
        ++m_exported;
    }
}

Transfer::State ExportJob::Step(unsigned milliseconds)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (m_isOpen && m_next < m_ids.size() && GetTickCount64() < end) {
        std::string cards;
        AppendCards(&cards);
        m_isOpen = m_file.Write(cards);
    }
    if (m_isOpen && m_next < m_ids.size())
        return State::Working;
    m_failed = !m_isOpen || !m_file.Finish();
    // The file is there: what it says is worth more than that the next one says it in the same words.
    if (m_bulk && !m_failed)
        (void)m_bulk->Commit();
    m_bulk.reset();
    return m_failed ? State::Failed : State::Done;
}

int ExportJob::PerMille() const
{
    return m_ids.empty() ? 0 : static_cast<int>(m_next * 1000 / m_ids.size());
}

std::wstring ExportJob::Failure() const
{
    const DWORD attributes = GetFileAttributesW(m_path.c_str());
    const bool hasFile = attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
    return std::wstring(L"The file cannot be written") + ReasonOf(m_file.Error()) +
           (hasFile ? L"\r\nThe file that was there is unchanged." : L"");
}

std::wstring ExportJob::Report() const
{
    return m_failed ? Failure() : CountText(m_exported, L"contact was", L"contacts were") + L" exported.";
}

} // namespace addrbook
