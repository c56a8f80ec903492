// A birthday as a card has it (RFC 6350, 4.3.1: "19850415", "--0415") and as a person reads it
// ("1985-04-15").
#pragma once

#include <string>
#include <string_view>

namespace vcard {

// A date in either of the two forms of ISO 8601, maybe with a time, in the form without hyphens and colons
// that version 4.0 asks for; any other text is left as it is.
std::string CompactDate(std::string_view value);

// "19850415" as "1985-04-15", "--0415" as "--04-15"; a time is left out; any other text as it is.
std::string ReadableDate(std::string_view value);

// Whether the text is a date, in either form, and nothing else.
bool IsDate(std::string_view text);

} // namespace vcard
