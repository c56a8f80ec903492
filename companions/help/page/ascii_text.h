// Characters of the markup, which is in ASCII whatever the text around it is in.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace help {

constexpr bool IsBlank(wchar_t character)
{
    return character == L' ' || (character >= L'\t' && character <= L'\r');
}

constexpr bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

constexpr wchar_t InSmallLetter(wchar_t character)
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

constexpr bool IsLetter(wchar_t character)
{
    return InSmallLetter(character) >= L'a' && InSmallLetter(character) <= L'z';
}

inline std::wstring InSmallLetters(std::wstring_view text)
{
    std::wstring small(text);
    std::transform(small.begin(), small.end(), small.begin(), InSmallLetter);
    return small;
}

} // namespace help
