#include "addrbook/transfer/export_job.h"

#include <algorithm>

#include "addrbook/transfer/contact_uids.h"
#include "addrbook/transfer/count_text.h"
#include "formats/vcard/writer.h"

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

ExportJob::ExportJob(DbContacts& contacts, std::vector<CEOID> ids, const std::wstring& path,
                     StoreTrouble notAll)
    : m_contacts(contacts), m_ids(std::move(ids)), m_path(path), m_notAll(notAll), m_isOpen(m_file.Open(path))
{}

// A write that is taken back at once.
bool ExportJob::CanName(CEOID id, const vcard::Contact& contact)
{
    const CeDBase::BulkScope givenUp(m_contacts);
    return SaveField(m_contacts, id, vcard::Field::Extra, contact[vcard::Field::Extra] + "\nX:");
}

// Of the current contact: lines that cannot be read whole are not written anew.
bool ExportJob::MayChangeLines()
{
    const std::vector<CEPROPID> foreign = m_contacts.ForeignProperties();
    return m_contacts.Trouble() == StoreTrouble::None &&
           !std::count(foreign.begin(), foreign.end(), kContactExtra);
}

// A store that cannot be written is exported all the same: a UID that would be another one each time is none.
void ExportJob::Name(CEOID id, vcard::Contact* contact)
{
    std::string& extra = (*contact)[vcard::Field::Extra];
    if (!UidOf(extra).empty() || !MayChangeLines())
        return;
    if (!m_canName)
        m_canName = CanName(id, *contact);
    const std::string line = *m_canName ? NewUidLine() : std::string();
    if (line.empty())
        return;
    extra.append(extra.empty() ? "" : "\n").append(line);
    m_named.push_back({id, line});
}

void ExportJob::AppendCards(std::string* cards)
{
    const CeDBase::ReadScope scope(m_contacts);
    for (vcard::Contact contact; m_next < m_ids.size() && cards->size() < kBlockBytes; ++m_next) {
        if (!LoadContact(m_contacts, m_ids[m_next], &contact)) {
            const StoreTrouble trouble = m_contacts.Trouble();
            if (trouble != StoreTrouble::None && m_unread++ == 0)
                m_unreadTrouble = trouble;
            continue;
        }
        Name(m_ids[m_next], &contact);
        vcard::AppendCard(*cards, contact);
        ++m_exported;
    }
}

Transfer::State ExportJob::Step(unsigned milliseconds)
{
    return m_phase == Phase::Writing ? WriteFor(milliseconds) : NameFor(milliseconds);
}

Transfer::State ExportJob::WriteFor(unsigned milliseconds)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (m_isOpen && m_next < m_ids.size() && GetTickCount64() < end) {
        std::string cards;
        AppendCards(&cards);
        m_isOpen = m_file.Write(cards);
    }
    if (m_isOpen && m_next < m_ids.size())
        return State::Working;
    if (m_exported == 0 && m_unread) {
        m_failed = true;
        return State::Failed;
    }
    if (!m_isOpen || m_named.empty())
        return Finish();
    m_phase = Phase::Naming;
    m_bulk.emplace(m_contacts);
    return State::Working;
}

// The contact may be gone by now, have another text, or have got a UID from somebody else.
bool ExportJob::KeepName(const Named& named)
{
    vcard::Contact contact;
    if (!LoadContact(m_contacts, named.id, &contact))
        return m_contacts.Trouble() == StoreTrouble::None;
    std::string& extra = contact[vcard::Field::Extra];
    if (!UidOf(extra).empty() || !MayChangeLines())
        return true;
    extra.append(extra.empty() ? "" : "\n").append(named.line);
    return SaveField(m_contacts, named.id, vcard::Field::Extra, extra);
}

// Only now, so that others can write to the store while the cards are written.
Transfer::State ExportJob::NameFor(unsigned milliseconds)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    do {
        if (!KeepName(m_named[m_kept]))
            return StartAgainWithoutNames();
        if (++m_kept == m_named.size())
            return Finish();
    } while (GetTickCount64() < end);
    return State::Working;
}

void ExportJob::Abandon()
{
    m_bulk.reset();
    m_file.Discard();
}

Transfer::State ExportJob::StartAgainWithoutNames()
{
    m_bulk.reset();
    m_named.clear();
    m_canName = false;
    m_startedAgain = true;
    m_phase = Phase::Writing;
    m_next = m_exported = m_unread = m_kept = 0;
    m_file.Discard();
    m_isOpen = m_file.Open(m_path);
    return State::Working;
}

Transfer::State ExportJob::Finish()
{
    m_failed = !m_isOpen || !m_file.Finish();
    // The file is there: the message is worth more than that the next one has the same words.
    if (m_bulk && !m_failed && !m_bulk->Commit())
        m_nameTrouble = m_bulk->Trouble();
    m_bulk.reset();
    return m_failed ? State::Failed : State::Done;
}

int ExportJob::PerMille() const
{
    // What is written once more was at its end before.
    return m_startedAgain ? 1000 : m_ids.empty() ? 0 : static_cast<int>(m_next * 1000 / m_ids.size());
}

std::wstring ExportJob::Failure() const
{
    const DWORD attributes = GetFileAttributesW(m_path.c_str());
    const bool hasFile = attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
    if (m_isOpen && m_unread)
        return L"The contacts cannot be read: " + ReasonText(m_unreadTrouble) + L". Nothing was exported.";
    return std::wstring(L"The file cannot be written") + ReasonOf(m_file.Error()) +
           (hasFile ? L"\r\nThe file that was there is unchanged." : L"");
}

std::wstring ExportJob::LeftOut() const
{
    std::wstring text;
    if (m_unread)
        text = L"\r\n" + CountText(m_unread, L"contact", L"contacts") + L" could not be read and " +
               (m_unread == 1 ? L"is" : L"are") + L" not in the file: " + ReasonText(m_unreadTrouble) + L".";
    if (m_notAll != StoreTrouble::None)
        text += L"\r\nThere are more contacts, which could not be read and are not in the file: " +
                ReasonText(m_notAll) + L".";
    return text;
}

std::wstring ExportJob::Report() const
{
    if (m_failed)
        return Failure();
    std::wstring text = CountText(m_exported, L"contact was", L"contacts were") + L" exported." + LeftOut();
    if (m_nameTrouble != StoreTrouble::None)
        text += L"\r\nThe marks by which the cards are known again could not be kept: " +
                ReasonText(m_nameTrouble) + L".";
    return text;
}

} // namespace addrbook
