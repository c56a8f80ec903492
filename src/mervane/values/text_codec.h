// UTF-16 to the store's UTF-8 and back, without loss: an unpaired surrogate, which strict UTF-8 has no place
// for, is written as the three bytes of its own value.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace mervane {

std::string EncodeText(std::wstring_view text);
// The same, appended to out.
void AppendEncoded(std::string& out, std::wstring_view text);

// Decodes up to the first NUL into out, which has room for text.size() units; returns the units written.
// Bytes that are no such encoding become U+FFFD, one each.
size_t DecodeText(std::string_view text, wchar_t* out);
std::wstring DecodeText(std::string_view text);

// Of an encoded text, as a blob has them.
inline std::span<const unsigned char> BytesOf(std::string_view text)
{
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

// A character of an encoded text as DecodeText understands it: two surrogates that are encoded one by one and
// make a pair are one character. For a place inside the text where a character begins.
struct DecodedCharacter {
    char32_t code;
    size_t length; // bytes
};
DecodedCharacter DecodeCharacter(std::string_view text, size_t at);
// Where the character begins that ends with the byte at a place, if it is a valid one.
size_t StartOfCharacter(std::string_view text, size_t lastByte);

} // namespace mervane
