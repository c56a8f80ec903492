// What an imported card changes in the contact that has its UID.
#pragma once

#include <string>
#include <vector>

#include "formats/vcard/vcard_contact.h"

namespace addrbook {

// The stored contact with what the card says. What the card lacks stays: a field, a phone or an e-mail, a
// line that no field has a place for. A phone or e-mail of the card takes the place of the stored one of the
// same number or address, a line that of the one with its name and kinds, also where several are stored.
// Merging a contact's own card changes nothing.
Contact MergedWith(const Contact& stored, const ImportedCard& card);

// Whether a person has something to decide: not where only the mark of the program that wrote the card, or
// of when it did, is another one.
bool IsChange(const Contact& stored, const Contact& merged);

// The card's contact as one of its own: its UID is left to the contact that has it.
Contact AsNew(const ImportedCard& card);

struct FieldChange {
    const wchar_t* field;
    std::string before; // empty: nothing was there
    std::string after;
};
// The fields that differ, in the order in which a person reads them. Of lines without a field only those that
// differ, and of a long one its beginning.
std::vector<FieldChange> ChangesBetween(const Contact& stored, const Contact& merged);

} // namespace addrbook
