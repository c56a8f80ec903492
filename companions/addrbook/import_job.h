// Imports a vCard file in one transaction.
#pragma once

#include <memory>
#include <optional>

#include "addrbook/byte_file.h"
#include "addrbook/contact_record.h"
#include "addrbook/contact_uids.h"
#include "addrbook/transfer.h"
#include "addrbook/vcard_contact.h"
#include "addrbook/vcard_reader.h"

namespace addrbook {

// A card whose UID a stored contact has becomes that contact, with all that the card says and nothing else.
// Without the state Done nothing was changed: the file could not be read, no card in it could, or the store
// could not be written. Ending this before is how it is cancelled. Between the steps no other program can
// write to the store.
class ImportJob : public Transfer {
  public:
    ImportJob(DbContacts& contacts, const std::wstring& path);

    State Step(unsigned milliseconds) override;
    int PerMille() const override;
    std::wstring Report() const override;

    size_t Imported() const { return m_imported; }
    size_t Updated() const { return m_updated; }
    size_t Unreadable() const { return m_reader.Unreadable(); }

  private:
    void Begin();
    bool Save();
    State Finish();
    State Fail(const wchar_t* why);
    std::wstring Counts() const;

    DbContacts& m_contacts;
    InputFile m_file;
    bool m_isOpen;
    VCardReader m_reader;
    VCard m_card;
    ContactReader m_contactReader;
    Contact m_contact;
    ContactSaver m_saver;
    std::optional<CeDBase::BulkScope> m_bulk;
    ContactUids m_uids;
    size_t m_imported = 0;
    size_t m_updated = 0;
    std::wstring m_failure;
};

} // namespace addrbook
