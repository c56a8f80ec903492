#include "formats/vcard/upgrade.h"

#include "formats/vcard/birthday.h"
#include "formats/vcard/charset.h"
#include "formats/vcard/old_values.h"

namespace vcard {

namespace {

enum class Encoding { None, QuotedPrintable, Base64, Unknown };

// What the parameters of an older line say, and which of them stay.
struct OldParameters {
    Encoding encoding = Encoding::None;
    std::string_view charset;
    std::string_view valueType;
    bool isPreferred = false;
    std::string types; // the list of TYPE
    std::string others;
};

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    for (const std::string_view other : names)
        if (EqualsNoCase(name, other))
            return true;
    return false;
}

Encoding EncodingOf(std::string_view word)
{
    if (EqualsNoCase(word, "QUOTED-PRINTABLE"))
        return Encoding::QuotedPrintable;
    if (IsOneOf(word, {"BASE64", "B"}))
        return Encoding::Base64;
    return IsOneOf(word, {"7BIT", "8BIT"}) ? Encoding::None : Encoding::Unknown;
}

bool IsBareEncoding(std::string_view word)
{
    return IsOneOf(word, {"QUOTED-PRINTABLE", "BASE64", "7BIT", "8BIT"});
}

void TakeTypes(std::string_view list, OldParameters* old)
{
    while (!list.empty()) {
        const std::string_view item = TakeListItem(&list);
        if (EqualsNoCase(item, "PREF")) {
            old->isPreferred = true;
            continue;
        }
        old->types += old->types.empty() ? "" : ",";
        old->types += item;
    }
}

// Version 2.1 has words without a name: kinds, or an encoding.
void TakeParameter(const Parameter& parameter, OldParameters* old)
{
    const bool isBare = parameter.name.empty();
    const bool isEncoding =
        isBare ? IsBareEncoding(parameter.value) : EqualsNoCase(parameter.name, "ENCODING");
    const Encoding encoding = isEncoding ? EncodingOf(WithoutQuotes(parameter.value)) : Encoding::Unknown;
    if (encoding != Encoding::Unknown)
        old->encoding = encoding;
    else if (EqualsNoCase(parameter.name, "CHARSET"))
        old->charset = WithoutQuotes(parameter.value);
    else if (EqualsNoCase(parameter.name, "VALUE"))
        old->valueType = parameter.value;
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

bool IsDate(std::string_view name)
{
    return IsOneOf(name, {"BDAY", "ANNIVERSARY", "REV"});
}

// Bytes that stay bytes; words may be in base 64 as well.
bool IsBinary(const Card::Line& line, const OldParameters& old)
{
    return old.encoding == Encoding::Base64 && !IsText(line.name);
}

// Another person's address; a whole card of his stays where it is.
bool IsAgentAddress(const Card::Line& line, const OldParameters& old)
{
    return EqualsNoCase(line.name, "AGENT") && IsOneOf(old.valueType, {"URI", "URL", "CID", "CONTENT-ID"});
}

// What the value's type is called now; empty where the new form says it by itself.
std::string_view ValueTypeOf(const Card::Line& line, const OldParameters& old)
{
    const bool isOldDate = IsDate(line.name) && IsOneOf(old.valueType, {"DATE", "DATE-TIME", "TIMESTAMP"});
    if (isOldDate || IsBinary(line, old) || IsAgentAddress(line, old))
        return {};
    return EqualsNoCase(old.valueType, "URL") ? "uri" : old.valueType;
}

std::string Decoded(const Card::Line& line, const OldParameters& old)
{
    if (old.encoding == Encoding::QuotedPrintable)
        return DecodeQuotedPrintable(line.value);
    return old.encoding == Encoding::Base64 ? DecodeBase64(line.value) : std::string(line.value);
}

std::string UpgradedText(const Card::Line& line, Version version, const OldParameters& old)
{
    const bool isDecoded = old.encoding == Encoding::QuotedPrintable || old.encoding == Encoding::Base64;
    if (version != Version::V21 && !isDecoded && IsUtf8(line.value))
        return std::string(line.value);
    std::string value = ToUtf8(Decoded(line, old), old.charset);
    if (version == Version::V21 && IsText(line.name))
        value = EscapeOldText(line.name, value);
    return EscapeLineEnds(value);
}

// The kind of a picture or sound goes from TYPE into its address.
std::string UpgradedBytes(const Card::Line& line, OldParameters* old)
{
    std::string_view types = old->types;
    const std::string mediaType = MediaTypeOf(line.name, TakeListItem(&types), line.value);
    if (!mediaType.empty())
        old->types = std::string(types);
    return DataAddress(mediaType, ToUtf8(line.value, {})); // what is no base 64 stays text
}

std::string UpgradedValue(const Card::Line& line, Version version, OldParameters* old)
{
    if (IsBinary(line, *old))
        return UpgradedBytes(line, old);
    if (IsAgentAddress(line, *old))
        old->types += old->types.empty() ? "agent" : ",agent";
    const std::string value = UpgradedText(line, version, *old);
    if (EqualsNoCase(line.name, "GEO"))
        return GeoAddress(value);
    return IsDate(line.name) ? CompactDate(value) : value;
}

void Upgrade(const Card::Line& line, Version version, std::string* whole)
{
    OldParameters old = ReadOldParameters(line.parameters);
    const std::string value = UpgradedValue(line, version, &old);
    const std::string_view valueType = ValueTypeOf(line, old);
    whole->assign(line.group).append(line.group.empty() ? "" : ".");
    whole->append(IsAgentAddress(line, old) ? "RELATED" : line.name);
    if (!old.types.empty())
        whole->append(";TYPE=").append(ToUtf8(old.types, old.charset));
    whole->append(old.isPreferred ? ";PREF=1" : "");
    if (!valueType.empty())
        whole->append(";VALUE=").append(ToUtf8(valueType, old.charset));
    if (!old.others.empty())
        whole->append(ToUtf8(old.others, old.charset));
    whole->append(":").append(value);
}

bool HasItem(std::string_view list, std::string_view wanted)
{
    while (!list.empty())
        if (EqualsNoCase(TakeListItem(&list), wanted))
            return true;
    return false;
}

// Version 4.0 knows no encoding either, but there are programs that write one.
bool IsOld(const Parameter& parameter, Version version)
{
    if (IsOneOf(parameter.name, {"ENCODING", "CHARSET"}))
        return true;
    if (version == Version::V40)
        return false;
    const bool isPreference = EqualsNoCase(parameter.name, "TYPE") && HasItem(parameter.value, "PREF");
    const bool isAddress = EqualsNoCase(parameter.name, "VALUE") && EqualsNoCase(parameter.value, "URL");
    return isPreference || isAddress || parameter.name.empty();
}

bool HasOldParameter(std::string_view parameters, Version version)
{
    Parameter parameter;
    for (Parameters all(parameters); all.Next(&parameter);)
        if (IsOld(parameter, version))
            return true;
    return false;
}

bool MayHaveOldValue(const Card::Line& line, Version version)
{
    if (version == Version::V40)
        return false;
    return IsDate(line.name) || IsOneOf(line.name, {"GEO", "AGENT"}) ||
           (version == Version::V21 && line.value.find_first_of("\\,;") != std::string_view::npos);
}

} // namespace

bool IsCurrent(const Card::Line& line, Version version, std::string* upgraded)
{
    const bool isOld = HasOldParameter(line.parameters, version) || MayHaveOldValue(line, version);
    if (!isOld && IsUtf8(line.whole))
        return true;
    if (isOld)
        Upgrade(line, version, upgraded);
    else
        *upgraded = ToUtf8(line.whole, {});
    return *upgraded == line.whole;
}

} // namespace vcard
