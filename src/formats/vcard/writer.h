// A contact as the text of a card of version 4.0 (RFC 6350). A file of cards is one behind the other.
#pragma once

#include <string>

#include "formats/vcard/contact.h"

namespace vcard {

// Appends the card from BEGIN to END: lines of up to 75 bytes, folded between characters and ended with CR
// LF. A line of Field::Extra stands in the place of the one that its field would give, while both say the
// same.
void AppendCard(std::string& out, const Contact& contact);

} // namespace vcard
