// The bytes of a help file as text.
#pragma once

#include <string>
#include <string_view>

namespace help {

// Whether the bytes are those of a text: few of them, if any, are control characters.
bool IsText(std::string_view bytes);

// UTF-8, with or without its mark, or UTF-16 with its mark. What cannot be decoded becomes U+FFFD, a NUL too.
std::wstring DecodeText(std::string_view bytes);

} // namespace help
