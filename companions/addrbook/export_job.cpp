#include "addrbook/export_job.h"

#include "addrbook/count_text.h"
#include "addrbook/vcard_contact.h"

namespace addrbook {

namespace {

constexpr size_t kBlockBytes = size_t{64} << 10; // written at once, about

} // namespace

ExportJob::ExportJob(DbContacts& contacts, std::vector<CEOID> ids, const std::wstring& path)
    : m_contacts(contacts), m_ids(std::move(ids)), m_isOpen(m_file.Open(path))
{}

Transfer::State ExportJob::Step(unsigned milliseconds)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (m_isOpen && m_next < m_ids.size() && GetTickCount64() < end) {
        const CeDBase::ReadScope scope(m_contacts);
        std::string cards;
        for (Contact contact; m_next < m_ids.size() && cards.size() < kBlockBytes; ++m_next) {
            if (!LoadContact(m_contacts, m_ids[m_next], &contact))
                continue;
            AppendCard(cards, contact);
            ++m_exported;
        }
        m_isOpen = m_file.Write(cards);
    }
    m_failed = !m_isOpen || (m_next == m_ids.size() && !m_file.Finish());
    if (m_failed)
        return State::Failed;
    return m_next == m_ids.size() ? State::Done : State::Working;
}

int ExportJob::PerMille() const
{
    return m_ids.empty() ? 0 : static_cast<int>(m_next * 1000 / m_ids.size());
}

std::wstring ExportJob::Report() const
{
    return m_failed ? L"The file cannot be written."
                    : CountText(m_exported, L"contact was", L"contacts were") + L" exported.";
}

} // namespace addrbook
