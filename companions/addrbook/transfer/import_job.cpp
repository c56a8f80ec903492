#include "addrbook/transfer/import_job.h"

#include "addrbook/transfer/count_text.h"

namespace addrbook {

namespace {

constexpr int kCardsPerLookAtTheClock = 16;
constexpr size_t kLargeCard = size_t{64} << 10; // bytes, after which the clock is looked at

// Calls work for one card after the other until the time is over or it ends with another state.
template <typename Work> Transfer::State WorkFor(unsigned milliseconds, Work work)
{
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (int card = 1;; ++card) {
        size_t size = 0;
        const Transfer::State state = work(&size);
        if (state != Transfer::State::Working)
            return state;
        if ((card % kCardsPerLookAtTheClock == 0 || size > kLargeCard) && GetTickCount64() >= end)
            return state;
    }
}

size_t SizeOf(const vcard::Contact& contact)
{
    size_t size = 0;
    for (const std::string& text : contact.texts)
        size += text.size();
    return size;
}

size_t HashOf(const vcard::Contact& contact)
{
    size_t hash = 0;
    for (const std::string& text : contact.texts)
        hash = hash * 1'000'003 + std::hash<std::string>()(text);
    return hash;
}

} // namespace

ImportJob::ImportJob(DbContacts& contacts, const std::wstring& path, ImportAsker asker)
    : m_contacts(contacts), m_asker(std::move(asker)), m_isOpen(m_file.Open(path)),
      m_reader([this](char* buffer, size_t size) { return m_file.Read(buffer, size); })
{}

Transfer::State ImportJob::Fail(std::wstring why)
{
    m_failure = std::move(why);
    m_bulk.reset();
    return State::Failed;
}

Transfer::State ImportJob::FailReading()
{
    return Fail(L"The contacts cannot be read: " + ReasonText(m_contacts.Trouble()) +
                L". Nothing was imported.");
}

Transfer::State ImportJob::FailWriting()
{
    const StoreTrouble trouble = m_bulk->Trouble();
    const std::wstring why = trouble == StoreTrouble::None ? L"" : L": " + ReasonText(trouble);
    return Fail(L"The contacts cannot be written" + why + L". Nothing was imported.");
}

Transfer::State ImportJob::Step(unsigned milliseconds)
{
    if (!m_isOpen)
        return Fail(L"The file cannot be read.");
    return WorkFor(milliseconds, [this](size_t* size) {
        const State state = m_phase == Phase::Reading     ? Read()
                            : m_phase == Phase::Comparing ? Compare()
                                                          : Write();
        *size = SizeOf(m_card.contact);
        return state;
    });
}

Transfer::State ImportJob::Read()
{
    if (!m_reader.Next(&m_vcard))
        return EndOfFile();
    if (!m_contactReader.Read(m_vcard, &m_card)) {
        m_reader.Reject("the card names nobody");
        return State::Working;
    }
    ++m_cardCount;
    return m_spool.Put(m_card)
               ? State::Working
               : Fail(L"The temporary folder has no room for the cards. Nothing was imported.");
}

Transfer::State ImportJob::EndOfFile()
{
    if (m_file.HasFailed())
        return Fail(L"The file cannot be read to its end. Nothing was imported.");
    if (m_cardCount == 0)
        return Fail(L"There is no card in the file that can be read.");
    const State state = BeginPass(Phase::Comparing);
    return state == State::Working && m_uids.IsEmpty() ? BeginPass(Phase::Writing) : state;
}

// From the first card on, with the UIDs as they are now; when it writes no other program changes them then.
Transfer::State ImportJob::BeginPass(Phase phase)
{
    m_phase = phase;
    m_spool.Rewind();
    m_cardNumber = 0;
    m_counts = {};
    if (phase == Phase::Writing)
        m_bulk.emplace(m_contacts);
    else
        m_bulk.reset();
    return m_uids.Load(m_contacts) ? State::Working : FailReading();
}

ImportJob::Found ImportJob::FindMatch()
{
    m_match.id = m_uids.IsEmpty() ? 0 : m_uids.Take(UidOf(m_card.contact[vcard::Field::Extra]));
    if (!m_match.id)
        return Found::Nothing;
    if (!LoadContact(m_contacts, m_match.id, &m_match.stored))
        return m_contacts.Trouble() == StoreTrouble::None ? Found::Gone : Found::Failed;
    m_match.hash = HashOf(m_match.stored);
    m_match.merged = MergedWith(m_match.stored, m_card);
    return IsChange(m_match.stored, m_match.merged) ? Found::Change : Found::Same;
}

// What was answered about this contact as it is now; nothing where it has to be asked.
std::optional<ImportChoice> ImportJob::ChoiceForMatch() const
{
    const auto found = m_decisions.find(m_cardNumber);
    if (found != m_decisions.end() && found->second.id == m_match.id &&
        found->second.contactHash == m_match.hash)
        return found->second.choice;
    return m_choiceForAll;
}

Transfer::State ImportJob::Compare()
{
    if (!m_spool.Next(&m_card)) {
        if (m_spool.HasFailed())
            return Fail(L"The temporary file cannot be read. Nothing was imported.");
        return BeginPass(Phase::Writing);
    }
    // One that is gone by now is found out when everything is written.
    const Found found = FindMatch();
    if (found == Found::Failed)
        return FailReading();
    if (found == Found::Change && !ChoiceForMatch())
        return State::Asking;
    ++m_cardNumber;
    return State::Working;
}

Transfer::State ImportJob::Ask(HWND owner)
{
    const ImportAnswer answer = m_asker(
        owner, {m_match.stored[vcard::Field::FileAs], ChangesBetween(m_match.stored, m_match.merged)});
    if (answer.choice == ImportChoice::Cancel)
        return State::Cancelled;
    m_decisions[m_cardNumber] = {m_match.id, m_match.hash, answer.choice};
    if (answer.isForAll)
        m_choiceForAll = answer.choice;
    ++m_cardNumber;
    return State::Working;
}

bool ImportJob::WriteNew()
{
    const auto found = m_decisions.find(m_cardNumber);
    // Its contact is gone, but it was not wanted.
    if (found != m_decisions.end() && found->second.choice == ImportChoice::Skip)
        return ++m_counts.skipped;
    ++m_counts.imported;
    return m_saver.Save(m_contacts, 0, m_card.contact) != 0;
}

bool ImportJob::WriteChoice(ImportChoice choice)
{
    if (choice == ImportChoice::Skip)
        return ++m_counts.skipped;
    if (choice == ImportChoice::AddAsNew) {
        ++m_counts.imported;
        return m_saver.Save(m_contacts, 0, AsNew(m_card)) != 0;
    }
    ++m_counts.updated;
    return m_saver.SaveChanges(m_contacts, m_match.id, m_match.stored, m_match.merged) != 0;
}

Transfer::State ImportJob::Write()
{
    if (!m_spool.Next(&m_card))
        return m_spool.HasFailed() ? Fail(L"The temporary file cannot be read. Nothing was imported.")
                                   : Finish();
    const Found found = FindMatch();
    if (found == Found::Failed)
        return FailReading();
    const std::optional<ImportChoice> choice = found == Found::Change ? ChoiceForMatch() : std::nullopt;
    if (found == Found::Change && !choice) {
        // Another program has changed the contact since: everything is taken back, and this is asked.
        return BeginPass(Phase::Comparing);
    }
    const bool written = found == Found::Same     ? ++m_counts.unchanged
                         : found == Found::Change ? WriteChoice(*choice)
                                                  : WriteNew();
    ++m_cardNumber;
    return written ? State::Working : FailWriting();
}

Transfer::State ImportJob::Finish()
{
    return m_bulk->Commit() ? State::Done : FailWriting();
}

// Reading is half of the work, comparing and writing the rest.
int ImportJob::PerMille() const
{
    const auto part = [](uint64_t position, uint64_t size, int most) {
        return size ? static_cast<int>(position * static_cast<uint64_t>(most) / size) : 0;
    };
    switch (m_phase) {
    case Phase::Reading: return part(m_file.Position(), m_file.Size(), 500);
    case Phase::Comparing: return 500 + part(m_spool.Position(), m_spool.Size(), 100);
    default: return 600 + part(m_spool.Position(), m_spool.Size(), 400);
    }
}

// "2 contacts were imported, 3 were updated, 1 was left as it is."
std::wstring ImportJob::CountsText() const
{
    struct Part {
        size_t count;
        const wchar_t* one;
        const wchar_t* many;
    };
    const Part parts[] = {{m_counts.imported, L"was imported", L"were imported"},
                          {m_counts.updated, L"was updated", L"were updated"},
                          {m_counts.unchanged, L"was unchanged", L"were unchanged"},
                          {m_counts.skipped, L"was skipped", L"were skipped"}};
    std::wstring text;
    for (const Part& part : parts) {
        if (!part.count)
            continue;
        const std::wstring noun = text.empty() ? part.count == 1 ? L"contact " : L"contacts " : L"";
        text += (text.empty() ? L"" : L", ") +
                CountText(part.count, (noun + part.one).c_str(), (noun + part.many).c_str());
    }
    return text + L".";
}

std::wstring ImportJob::Report() const
{
    std::wstring text = m_failure.empty() ? CountsText() : m_failure;
    if (!m_reader.Unreadable())
        return text;
    if (m_failure.empty())
        text += L"\r\n" + CountText(m_reader.Unreadable(), L"card", L"cards") + L" could not be read.";
    return text + L"\r\nLine " + std::to_wstring(m_reader.ErrorLine()) + L": " +
           ToWide(m_reader.ErrorText()) + L".";
}

} // namespace addrbook
