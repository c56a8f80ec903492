#include "addrbook/vcard_upgrade.h"

#include "addrbook/vcard_birthday.h"
#include "addrbook/vcard_charset.h"

namespace addrbook {

namespace {

enum class Encoding { None, QuotedPrintable, Base64 };

// What the parameters of an older line say, and what of them stays.
struct OldParameters {
    Encoding encoding = Encoding::None;
    std::string_view charset;
    std::string_view mediaType; // the first word of TYPE
    bool isPreferred = false;
    std::string types; // the list of TYPE
    std::string others;
};

Encoding EncodingOf(std::string_view word)
{
    if (EqualsNoCase(word, "QUOTED-PRINTABLE"))
        return Encoding::QuotedPrintable;
    return EqualsNoCase(word, "BASE64") || EqualsNoCase(word, "B") ? Encoding::Base64 : Encoding::None;
}

void TakeTypes(std::string_view list, OldParameters* old)
{
    while (!list.empty()) {
        const std::string_view item = TakeListItem(&list);
        if (EqualsNoCase(item, "PREF")) {
            old->isPreferred = true;
            continue;
        }
        if (old->mediaType.empty())
            old->mediaType = item;
        old->types += old->types.empty() ? "" : ",";
        old->types += item;
    }
}

// Version 2.1 has words without a name: kinds, or an encoding.
void TakeParameter(const Parameter& parameter, OldParameters* old)
{
    const bool isBare = parameter.name.empty();
    const bool isLetter = EqualsNoCase(parameter.value, "B");
    const Encoding encoding = isBare && isLetter ? Encoding::None : EncodingOf(parameter.value);
    if (EqualsNoCase(parameter.name, "ENCODING") || (isBare && encoding != Encoding::None))
        old->encoding = encoding;
    else if (EqualsNoCase(parameter.name, "CHARSET"))
        old->charset = parameter.value;
    else if (isBare || EqualsNoCase(parameter.name, "TYPE"))
        TakeTypes(parameter.value, old);
    else
        old->others.append(";").append(parameter.name).append("=").append(parameter.value);
}

OldParameters ReadOldParameters(std::string_view parameters)
{
    OldParameters old;
    Parameter parameter;
    for (Parameters all(parameters); all.Next(&parameter);)
        TakeParameter(parameter, &old);
    return old;
}

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    for (const std::string_view other : names)
        if (EqualsNoCase(name, other))
            return true;
    return false;
}

// The properties whose value is words, which version 2.1 escapes in its own way.
bool IsText(std::string_view name)
{
    return IsOneOf(name,
                   {"FN", "N", "ORG", "TITLE", "ROLE", "NOTE", "ADR", "LABEL", "EMAIL", "TEL", "NICKNAME"});
}

// In version 2.1 a backslash escapes the semicolon (and, by custom, comma and colon) and nothing else. A
// semicolon without one parts the value where the property has parts.
std::string EscapeOldText(std::string_view value, bool hasParts)
{
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

// Line ends inside a value, which only an encoding can bring, as the escape for them.
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

std::string MediaTypeOf(std::string_view name, std::string_view type)
{
    if (type.find('/') != std::string_view::npos)
        return std::string(type);
    std::string lower(type);
    for (char& character : lower)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    if (IsOneOf(name, {"PHOTO", "LOGO"}))
        return "image/" + (lower.empty() ? "jpeg" : lower);
    if (EqualsNoCase(name, "SOUND"))
        return "audio/" + (lower.empty() ? "basic" : lower);
    return lower == "pgp" ? "application/pgp-keys" : "application/octet-stream";
}

std::string DataAddress(const VCard::Line& line, const OldParameters& old)
{
    std::string value = "data:" + MediaTypeOf(line.name, old.mediaType) + ";base64,";
    for (const char character : line.value)
        if (character != ' ' && character != '\t')
            value += character;
    return value;
}

std::string UpgradedValue(const VCard::Line& line, VCardVersion version, const OldParameters& old)
{
    if (old.encoding == Encoding::Base64)
        return DataAddress(line, old);
    std::string value = old.encoding == Encoding::QuotedPrintable ? DecodeQuotedPrintable(line.value)
                                                                  : std::string(line.value);
    value = ToUtf8(value, old.charset);
    if (version == VCardVersion::V21 && IsText(line.name))
        value = EscapeOldText(value, IsOneOf(line.name, {"N", "ORG", "ADR"}));
    return EscapeLineEnds(value);
}

// "VALUE=binary" and the like say what the new form says by itself.
void DropValueType(std::string* parameters)
{
    std::string kept;
    Parameter parameter;
    for (Parameters all(*parameters); all.Next(&parameter);)
        if (!EqualsNoCase(parameter.name, "VALUE"))
            kept.append(";").append(parameter.name).append("=").append(parameter.value);
    *parameters = kept;
}

void Upgrade(const VCard::Line& line, VCardVersion version, std::string* whole)
{
    OldParameters old = ReadOldParameters(line.parameters);
    if (old.encoding == Encoding::Base64) {
        old.types.clear();
        DropValueType(&old.others);
    }
    whole->assign(line.group).append(line.group.empty() ? "" : ".").append(line.name);
    if (!old.types.empty())
        whole->append(";TYPE=").append(old.types);
    whole->append(old.isPreferred ? ";PREF=1" : "").append(old.others).append(":");
    const bool isPlain = version == VCardVersion::V30 && old.encoding == Encoding::None && IsUtf8(line.value);
    if (IsOneOf(line.name, {"BDAY", "ANNIVERSARY"}))
        whole->append(CompactDate(isPlain ? std::string(line.value) : UpgradedValue(line, version, old)));
    else if (isPlain)
        whole->append(line.value);
    else
        whole->append(UpgradedValue(line, version, old));
}

bool HasItem(std::string_view list, std::string_view wanted)
{
    while (!list.empty())
        if (EqualsNoCase(TakeListItem(&list), wanted))
            return true;
    return false;
}

bool HasOldDate(const VCard::Line& line)
{
    return IsOneOf(line.name, {"BDAY", "ANNIVERSARY"}) && CompactDate(line.value) != line.value;
}

bool HasOldParameter(std::string_view parameters)
{
    Parameter parameter;
    for (Parameters all(parameters); all.Next(&parameter);) {
        const bool isPreference = EqualsNoCase(parameter.name, "TYPE") && HasItem(parameter.value, "PREF");
        if (isPreference || parameter.name.empty() || IsOneOf(parameter.name, {"ENCODING", "CHARSET"}))
            return true;
    }
    return false;
}

} // namespace

bool IsCurrent(const VCard::Line& line, VCardVersion version, std::string* upgraded)
{
    bool isCurrent = IsUtf8(line.whole);
    if (version != VCardVersion::V40)
        isCurrent = isCurrent && !HasOldDate(line) && !HasOldParameter(line.parameters);
    if (version == VCardVersion::V21)
        isCurrent = isCurrent && line.value.find_first_of("\\,;") == std::string_view::npos;
    if (isCurrent)
        return true;
    Upgrade(line, version, upgraded);
    return *upgraded == line.whole;
}

} // namespace addrbook
