#include "formats/vcard/old_values.h"

#include <algorithm>

#include "formats/vcard/line_text.h"

namespace vcard {

namespace {

constexpr std::string_view kTexts[] = {"FN",  "N",     "ORG",   "TITLE", "ROLE",    "NOTE",
                                       "ADR", "LABEL", "EMAIL", "TEL",   "NICKNAME"};

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::string Lower(std::string_view text)
{
    std::string lower(text);
    for (char& character : lower)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    return lower;
}

// What may stand in a media type without quotes.
bool IsMediaWord(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
        return IsDigit(character) || (character >= 'a' && character <= 'z') || character == '-' ||
               character == '+' || character == '.' || character == '/';
    });
}

// The first bytes of the three kinds of pictures that come without a type.
std::string PictureTypeOf(std::string_view value)
{
    value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
    if (value.starts_with("iVBOR"))
        return "image/png";
    return value.starts_with("R0lG") ? "image/gif" : "image/jpeg";
}

// "+37.38" as "37.38", -90 to 90 (or as far as limit goes); empty when it is no such number.
std::string Degrees(std::string_view text, int limit)
{
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    int whole = 0;
    size_t digits = 0;
    for (; digits < text.size() && IsDigit(text[digits]) && whole <= limit; ++digits)
        whole = whole * 10 + (text[digits] - '0');
    std::string_view fraction = text.substr(digits);
    if (fraction.starts_with('.')) {
        fraction.remove_prefix(1);
        if (fraction.empty())
            return {};
    }
    const bool isNumber =
        digits > 0 && whole <= limit && std::all_of(fraction.begin(), fraction.end(), IsDigit);
    return isNumber ? (isNegative ? "-" : "") + std::string(text) : std::string();
}

} // namespace

bool IsText(std::string_view name)
{
    return std::any_of(std::begin(kTexts), std::end(kTexts),
                       [&](std::string_view text) { return EqualsNoCase(name, text); });
}

std::string EscapeOldText(std::string_view name, std::string_view value)
{
    const bool hasParts = EqualsNoCase(name, "N") || EqualsNoCase(name, "ORG") || EqualsNoCase(name, "ADR");
    std::string out;
    for (size_t i = 0; i < value.size(); ++i) {
        const char next = i + 1 < value.size() ? value[i + 1] : '\0';
        if (value[i] == '\\' && (next == ';' || next == ',' || next == ':')) {
            out.append(next == ':' ? "" : "\\").append(1, next);
            ++i;
        } else if (value[i] == '\\' || value[i] == ',' || (value[i] == ';' && !hasParts)) {
            out.append({'\\', value[i]});
        } else {
            out += value[i];
        }
    }
    return out;
}

std::string EscapeLineEnds(std::string_view value)
{
    std::string out;
    for (size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\r' && i + 1 < value.size() && value[i + 1] == '\n')
            ++i;
        if (value[i] == '\r' || value[i] == '\n')
            out += "\\n";
        else if (value[i] != '\0')
            out += value[i];
    }
    return out;
}

std::string MediaTypeOf(std::string_view name, std::string_view type, std::string_view value)
{
    const std::string lower = Lower(type);
    const bool isPicture = EqualsNoCase(name, "PHOTO") || EqualsNoCase(name, "LOGO");
    if (isPicture && lower.empty())
        return PictureTypeOf(value);
    if (!IsMediaWord(lower))
        return EqualsNoCase(name, "SOUND") && lower.empty() ? "audio/basic" : "";
    if (lower.find('/') != std::string::npos)
        return lower;
    if (isPicture)
        return "image/" + lower;
    if (EqualsNoCase(name, "SOUND"))
        return "audio/" + lower;
    return EqualsNoCase(name, "KEY") && lower == "pgp" ? "application/pgp-keys" : "";
}

std::string DataAddress(const std::string& mediaType, std::string_view value)
{
    std::string address = "data:" + (mediaType.empty() ? "application/octet-stream" : mediaType) + ";base64,";
    for (const char character : value)
        if (character != ' ' && character != '\t')
            address += character;
    return address;
}

std::string GeoAddress(std::string_view value)
{
    const size_t between = value.find(';');
    if (between == std::string_view::npos)
        return std::string(value);
    const std::string latitude = Degrees(value.substr(0, between), 90);
    const std::string longitude = Degrees(value.substr(between + 1), 180);
    return latitude.empty() || longitude.empty() ? std::string(value) : "geo:" + latitude + "," + longitude;
}

} // namespace vcard
