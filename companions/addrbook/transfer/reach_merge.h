// The phones and e-mails of a contact and of a card that is known to be its own.
#pragma once

#include <string>

#include "formats/vcard/fields.h"

namespace addrbook {

// Both lists, one on a line, in the order of the stored one, what is new behind it. A phone is the same when
// its digits are, an e-mail whatever the case: the card's takes its place, with the kinds that were stored
// where it has none. Property::Phone or Property::Email.
std::string MergedReaches(vcard::Property property, const std::string& stored, const std::string& card);

} // namespace addrbook
