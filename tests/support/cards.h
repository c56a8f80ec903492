// Cards as the tests read and write them.
#pragma once

#include <string>
#include <vector>

#include "formats/vcard/contact_reader.h"
#include "formats/vcard/contact.h"
#include "formats/vcard/reader.h"

namespace vcard {

// A stream over text that hands out so many bytes at once.
text::ByteSource SourceOf(const std::string& text, size_t piece = 1 << 16);

struct ReadCards {
    std::vector<Contact> contacts;
    size_t unreadable = 0;
    size_t errorLine = 0;
    std::string errorText;
};
ReadCards ReadAll(const std::string& text, size_t piece = 1 << 16);

// A card of one version around some lines, which are separated by "\n".
std::string CardOf(const std::string& lines, const std::string& version = "4.0");
// The contact of such a card; an empty one after a failure.
Contact ContactOf(const std::string& lines, const std::string& version = "4.0");

// The same as the import reads it.
ImportedCard ImportedOf(const std::string& lines, const std::string& version = "4.0");

// The contact's card, its lines unfolded, between BEGIN, VERSION and END, each ended with "\n".
std::string LinesOf(const Contact& contact);

} // namespace vcard
