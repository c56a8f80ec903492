// The character sets and encodings in which vCards before version 4.0 are written (RFC 2045, 6.7 and 6.8).
// Nothing here fails: what makes no sense stays as it is.
#pragma once

#include <string>
#include <string_view>

namespace vcard {

bool IsUtf8(std::string_view text);

// The text in UTF-8. charset is a name of the Internet's ("ISO-8859-1"). When it is empty, "UTF-8", or not
// known, the text is taken for UTF-8, and each byte that is none for one of Windows' Western set.
std::string ToUtf8(std::string_view text, std::string_view charset);

// Quoted-printable undone. A "=" that no two hexadecimal digits follow stays.
std::string DecodeQuotedPrintable(std::string_view text);

// Base 64 undone, blanks in it passed over; the text itself when it is something else.
std::string DecodeBase64(std::string_view text);

} // namespace vcard
