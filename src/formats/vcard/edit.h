// What becomes of a card's own lines when a person changes the fields that they told of.
#pragma once

#include "formats/vcard/contact.h"

namespace vcard {

// Brings the lines of Field::Extra that told of a field's old text in line with its new one: a name's other
// parts stay, what the new text contradicts goes. *after is before with
// some fields changed.
void FollowEdit(const Contact& before, Contact* after);

} // namespace vcard
