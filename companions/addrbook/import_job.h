// Imports a vCard file in one transaction.
#pragma once

#include <memory>
#include <optional>

#include "addrbook/byte_file.h"
#include "addrbook/contact_record.h"
#include "addrbook/transfer.h"
#include "addrbook/vcard_contact.h"
#include "addrbook/vcard_reader.h"

namespace addrbook {

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
    size_t Unreadable() const { return m_reader.Unreadable(); }

  private:
    State Finish();
    State Fail(const wchar_t* why);

    DbContacts& m_contacts;
    InputFile m_file;
    bool m_isOpen;
    VCardReader m_reader;
    VCard m_card;
    ContactReader m_contactReader;
    Contact m_contact;
    ContactSaver m_saver;
    std::optional<CeDBase::BulkScope> m_bulk;
    size_t m_imported = 0;
    std::wstring m_failure;
};

} // namespace addrbook
