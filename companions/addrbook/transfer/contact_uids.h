// The UIDs of vCards, by which a card is known again.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "mervane/db_contacts.h"

namespace addrbook {

// The UID that a contact's extra lines name, in the form in which two are compared: small letters, without
// "urn:uuid:", which some programs put before it and some do not. Empty for none.
std::string UidOf(std::string_view extra);

// A line that names a UID no other card has; empty when the system cannot make one.
std::string NewUidLine();

// Which of the contacts that are stored have which UID.
class ContactUids {
  public:
    // Reads all contacts anew. false when that fails, and then it knows none: a UID that is not found may be
    // a stored contact's.
    [[nodiscard]] bool Load(DbContacts& contacts);

    bool IsEmpty() const { return m_ids.empty(); }
    // The contact with this UID, which is not found again: a second card of the same UID is another contact.
    // 0 when there is none.
    CEOID Take(const std::string& uid);

  private:
    std::multimap<std::string, CEOID> m_ids;
};

} // namespace addrbook
