#include <cstdint>
#include <optional>

#include "help/page/ascii_text.h"
#include "help/page/html_tokens.h"

namespace help {

namespace {

struct Entity {
    const wchar_t* name;
    wchar_t character;
};
constexpr Entity kEntities[] = {
    {L"amp", L'&'},        {L"lt", L'<'},         {L"gt", L'>'},         {L"quot", L'"'},
    {L"apos", L'\''},      {L"nbsp", L'\u00A0'},  {L"copy", L'\u00A9'},  {L"times", L'\u00D7'},
    {L"ndash", L'\u2013'}, {L"mdash", L'\u2014'}, {L"lsquo", L'\u2018'}, {L"rsquo", L'\u2019'},
    {L"ldquo", L'\u201C'}, {L"rdquo", L'\u201D'}, {L"bull", L'\u2022'},  {L"hellip", L'\u2026'},
    {L"larr", L'\u2190'},  {L"uarr", L'\u2191'},  {L"rarr", L'\u2192'},  {L"darr", L'\u2193'},
};
constexpr size_t kLongestEntity = 10; // between "&" and ";"

std::wstring InUtf16(uint32_t code)
{
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return L"\uFFFD";
    if (code < 0x10000)
        return {static_cast<wchar_t>(code)};
    return {static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)),
            static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF))};
}

std::optional<std::wstring> NumberedCharacter(std::wstring_view digits)
{
    const bool isHexadecimal = !digits.empty() && InSmallLetter(digits[0]) == L'x';
    if (isHexadecimal)
        digits.remove_prefix(1);
    if (digits.empty())
        return std::nullopt;
    uint32_t code = 0; // at most nine digits: it cannot overflow
    for (const wchar_t digit : digits) {
        const wchar_t small = InSmallLetter(digit);
        if (IsDigit(digit))
            code = code * (isHexadecimal ? 16 : 10) + static_cast<uint32_t>(digit - L'0');
        else if (isHexadecimal && small >= L'a' && small <= L'f')
            code = code * 16 + static_cast<uint32_t>(small - L'a' + 10);
        else
            return std::nullopt;
        code = std::min<uint32_t>(code, 0x110000);
    }
    return InUtf16(code);
}

std::optional<std::wstring> CharacterOf(std::wstring_view name)
{
    if (!name.empty() && name[0] == L'#')
        return NumberedCharacter(name.substr(1));
    for (const Entity& entity : kEntities)
        if (name == entity.name)
            return std::wstring(1, entity.character);
    return std::nullopt;
}

} // namespace

std::wstring DecodeEntities(std::wstring_view text)
{
    std::wstring decoded;
    decoded.reserve(text.size());
    for (size_t place = 0; place < text.size(); ++place) {
        if (text[place] == L'&') {
            const size_t end = text.substr(place, kLongestEntity + 2).find(L';');
            const auto character =
                end == std::wstring_view::npos ? std::nullopt : CharacterOf(text.substr(place + 1, end - 1));
            if (character) {
                decoded += *character;
                place += end;
                continue;
            }
        }
        decoded += text[place];
    }
    return decoded;
}

} // namespace help
