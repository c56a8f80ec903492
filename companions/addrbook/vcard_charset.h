// The character sets in which older vCards are written.
#pragma once

#include <string>
#include <string_view>

namespace addrbook {

bool IsUtf8(std::string_view text);

// The text in UTF-8. charset is a name of the Internet's ("ISO-8859-1"), or empty: then the text is UTF-8
// where it can be, and Windows' Western set where it cannot, as is the text of a set that the system does not
// know.
std::string ToUtf8(std::string_view text, std::string_view charset);

// Quoted-printable undone. A "=" that no two hexadecimal digits follow stays.
std::string DecodeQuotedPrintable(std::string_view text);

} // namespace addrbook
