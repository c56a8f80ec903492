// Values as the versions before 4.0 write them, brought to its form.
#pragma once

#include <string>
#include <string_view>

namespace vcard {

// The properties whose value is words, which version 2.1 escapes in its own way.
bool IsText(std::string_view name);

// A value of version 2.1, where a backslash escapes the semicolon (and, by custom, comma and colon) and
// nothing else. A semicolon without one parts the value where the property has parts.
std::string EscapeOldText(std::string_view name, std::string_view value);

// Line ends inside a value, which only an encoding can bring, as the escape for them; NUL bytes are dropped.
std::string EscapeLineEnds(std::string_view value);

// The media type of bytes in base 64, by the line's first TYPE and for pictures by how the bytes begin; empty
// when these do not tell.
std::string MediaTypeOf(std::string_view name, std::string_view type, std::string_view value);

// "data:image/png;base64,..."; blanks in the value are dropped.
std::string DataAddress(const std::string& mediaType, std::string_view value);

// "37.38;-122.08", latitude first, as "geo:37.38,-122.08"; any other text as it is.
std::string GeoAddress(std::string_view value);

} // namespace vcard
