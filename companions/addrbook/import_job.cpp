#include "addrbook/import_job.h"

#include "addrbook/count_text.h"

namespace addrbook {

namespace {

constexpr int kCardsPerLookAtTheClock = 16;

} // namespace

ImportJob::ImportJob(DbContacts& contacts, const std::wstring& path)
    : m_contacts(contacts), m_isOpen(m_file.Open(path)),
      m_reader([this](char* buffer, size_t size) { return m_file.Read(buffer, size); })
{}

Transfer::State ImportJob::Fail(const wchar_t* why)
{
    m_failure = why;
    m_bulk.reset();
    return State::Failed;
}

// From here on no other program changes what is stored.
void ImportJob::Begin()
{
    m_bulk.emplace(m_contacts);
    m_uids.Load(m_contacts);
}

bool ImportJob::Save()
{
    const CEOID stored = m_uids.IsEmpty() ? 0 : m_uids.Take(UidOf(m_contact[Field::Extra]));
    ++(stored ? m_updated : m_imported);
    return m_saver.Save(m_contacts, stored, m_contact) != 0;
}

Transfer::State ImportJob::Step(unsigned milliseconds)
{
    if (!m_isOpen)
        return Fail(L"The file cannot be read.");
    if (!m_bulk)
        Begin();
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (int card = 1; card % kCardsPerLookAtTheClock || GetTickCount64() < end; ++card) {
        if (!m_reader.Next(&m_card))
            return Finish();
        if (!m_contactReader.Read(m_card, &m_contact))
            m_reader.Reject("the card names nobody");
        else if (!Save())
            return Fail(L"The contacts cannot be written. Nothing was imported.");
    }
    return State::Working;
}

Transfer::State ImportJob::Finish()
{
    if (m_file.HasFailed())
        return Fail(L"The file cannot be read to its end. Nothing was imported.");
    if (m_imported + m_updated == 0)
        return Fail(L"There is no card in the file that can be read.");
    const bool kept = m_bulk->Commit() != 0;
    return kept ? State::Done : Fail(L"The contacts cannot be written. Nothing was imported.");
}

int ImportJob::PerMille() const
{
    return m_file.Size() ? static_cast<int>(m_file.Position() * 1000 / m_file.Size()) : 0;
}

// "2 contacts were imported, 3 were updated."
std::wstring ImportJob::Counts() const
{
    if (m_imported == 0 && m_updated)
        return CountText(m_updated, L"contact was updated.", L"contacts were updated.");
    const std::wstring imported = CountText(m_imported, L"contact was", L"contacts were") + L" imported";
    return imported + (m_updated ? L", " + CountText(m_updated, L"was updated.", L"were updated.") : L".");
}

std::wstring ImportJob::Report() const
{
    std::wstring text = m_failure.empty() ? Counts() : m_failure;
    if (!m_reader.Unreadable())
        return text;
    if (m_failure.empty())
        text += L"\r\n" + CountText(m_reader.Unreadable(), L"card", L"cards") + L" could not be read.";
    return text + L"\r\nLine " + std::to_wstring(m_reader.ErrorLine()) + L": " +
           ToWide(m_reader.ErrorText()) + L".";
}

} // namespace addrbook
