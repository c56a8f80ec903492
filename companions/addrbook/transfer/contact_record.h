// A contact as a record of the store and back.
#pragma once

#include <array>
#include <string>

#include "formats/vcard/contact.h"
#include "mervane/db_contacts.h"

namespace addrbook {

CEPROPID PropertyOf(vcard::Field field);

std::wstring ToWide(std::string_view text);
// Lines that end with CR LF, CR or LF are separated by "\n" then.
std::string ToUtf8(std::wstring_view text);

// Reads the record; false when it is gone, or, as the database's Trouble tells, cannot be read.
[[nodiscard]] bool LoadContact(DbContacts& contacts, CEOID id, vcard::Contact* contact);

// Writes one field of a record. false on failure.
[[nodiscard]] bool SaveField(DbContacts& contacts, CEOID id, vcard::Field field, const std::string& text);

// Writes contacts one after the other; keeps its memory from one to the next.
class ContactSaver {
  public:
    // Writes to the record id, or a new one when id is 0; what is empty is removed. The identifier written, 0
    // on failure.
    [[nodiscard]] CEOID Save(DbContacts& contacts, CEOID id, const vcard::Contact& contact);
    // Writes only what has changed since the record was read: what could not be read whole stays as it is.
    [[nodiscard]] CEOID SaveChanges(DbContacts& contacts, CEOID id, const vcard::Contact& before,
                                    const vcard::Contact& after);

  private:
    CEOID Write(DbContacts& contacts, CEOID id, const vcard::Contact* before, const vcard::Contact& contact);

    std::array<std::wstring, vcard::kFieldCount> m_texts;
};

} // namespace addrbook
