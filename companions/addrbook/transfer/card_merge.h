// What an imported card changes in the contact that has its UID.
#pragma once

#include <string>
#include <vector>

#include "formats/vcard/contact_reader.h"

namespace addrbook {

// The stored contact with what the card says. What the card lacks stays: a field, a phone or an e-mail, a
// line that no field has a place for. A phone or e-mail of the card replaces the stored one of the same
// number or address; a line replaces the one with its name and kinds. So it is where several are stored, too.
// Merging a contact's own card changes nothing.
vcard::Contact MergedWith(const vcard::Contact& stored, const vcard::ImportedCard& card);

// Whether a person has something to decide: not where only the mark of the program that wrote the card, or
// of when it did, is another one.
bool IsChange(const vcard::Contact& stored, const vcard::Contact& merged);

// The card's contact as one of its own: its UID is left to the contact that has it.
vcard::Contact AsNew(const vcard::ImportedCard& card);

struct FieldChange {
    const wchar_t* field;
    std::string before; // empty: nothing was there
    std::string after;
};
// The fields that differ, in the order in which a person reads them. Of lines without a field only those that
// differ, and of a long one its beginning.
std::vector<FieldChange> ChangesBetween(const vcard::Contact& stored, const vcard::Contact& merged);

} // namespace addrbook
