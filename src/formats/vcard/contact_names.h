// How a contact is called: as it is filed and as it is addressed.
#pragma once

#include "formats/vcard/contact.h"

namespace vcard {

// What File As is unless somebody chooses it: "Last, First", else what formattedName says, else the company,
// the first e-mail, the first phone; empty when there is none of them.
void AppendFileAs(std::string& out, const Contact& contact, std::string_view formattedName);
std::string FileAsOf(const Contact& contact, std::string_view formattedName = {});

// The whole name as one writes it on a letter: "First Last", else File As, else what that would be.
void AppendFormattedName(std::string& out, const Contact& contact);
std::string FormattedNameOf(const Contact& contact);

} // namespace vcard
