// Exports contacts to a vCard file, which takes its place only when it is whole. A contact without a UID gets
// one, which it keeps, so that its card is known again when it comes back.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "addrbook/transfer/contact_record.h"
#include "addrbook/transfer/transfer.h"
#include "formats/text/byte_file.h"

namespace addrbook {

// What a message says of why a file could not be written, by the system's number for it: the end of a
// sentence.
const wchar_t* ReasonOf(DWORD error);

class ExportJob : public Transfer {
  public:
    // The contacts in their order; one that is gone when its turn comes is passed over,
    // one that cannot be read is left out and told of. So is, where there may be more than these, why they
    // could not be had.
    ExportJob(DbContacts& contacts, std::vector<CEOID> ids, const std::wstring& path,
              StoreTrouble notAll = StoreTrouble::None);

    State Step(unsigned milliseconds) override;
    void Abandon() override;
    int PerMille() const override;
    std::wstring Report() const override;

  private:
    // A contact that its card has given a UID.
    struct Named {
        CEOID id;
        std::string line;
    };
    enum class Phase { Writing, Naming };

    void AppendCards(std::string* cards);
    void Name(CEOID id, vcard::Contact* contact);
    bool CanName(CEOID id, const vcard::Contact& contact);
    bool KeepName(const Named& named);
    bool MayChangeLines();
    State WriteFor(unsigned milliseconds);
    State NameFor(unsigned milliseconds);
    State Finish();
    State StartAgainWithoutNames();
    std::wstring Failure() const;
    std::wstring LeftOut() const;

    DbContacts& m_contacts;
    std::vector<CEOID> m_ids;
    std::wstring m_path;
    const StoreTrouble m_notAll; // why there may be more
    text::OutputFile m_file;
    bool m_isOpen;
    size_t m_next = 0;
    size_t m_exported = 0;
    size_t m_unread = 0;
    StoreTrouble m_unreadTrouble = StoreTrouble::None; // of the first of them
    StoreTrouble m_nameTrouble = StoreTrouble::None;   // why the UIDs could not be kept in the end
    bool m_failed = false;
    bool m_startedAgain = false;
    Phase m_phase = Phase::Writing;
    std::vector<Named> m_named;
    size_t m_kept = 0; // of those
    std::optional<bool> m_canName;
    // For the new UIDs, which are kept if the file is.
    std::optional<CeDBase::BulkScope> m_bulk;
};

} // namespace addrbook
