// A card as a contact, a contact as a card.
#pragma once

#include "addrbook/contact.h"
#include "addrbook/vcard_card.h"

namespace addrbook {

// What the fields have no place for goes to Field::Extra. false when the card names nobody: it has neither a
// name nor a company, e-mail or phone.
[[nodiscard]] bool ReadContact(const VCard& card, Contact* contact);

// Appends the contact as a card of version 4.0: lines folded at 75 bytes, ended with CR LF.
void AppendCard(std::string& out, const Contact& contact);

// After a contact was edited: brings the extra lines that told of a field's old text in line with its new
// one.
void FollowEdit(const Contact& before, Contact* after);

} // namespace addrbook
