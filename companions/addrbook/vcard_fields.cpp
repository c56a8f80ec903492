#include "addrbook/vcard_fields.h"

#include <algorithm>

#include "addrbook/vcard_birthday.h"

namespace addrbook {

namespace {

struct Known {
    std::string_view name;
    Property property;
    Field field;
};
constexpr Known kKnown[] = {
    {"FN", Property::FormattedName, Field::FileAs}, {"N", Property::Name, Field::LastName},
    {"X-FILE-AS", Property::FileAs, Field::FileAs}, {"ORG", Property::Company, Field::Company},
    {"TITLE", Property::JobTitle, Field::JobTitle}, {"EMAIL", Property::Email, Field::Emails},
    {"TEL", Property::Phone, Field::Phones},        {"ADR", Property::Address, Field::Address},
    {"BDAY", Property::Birthday, Field::Birthday},  {"NOTE", Property::Note, Field::Note},
};

const Known* KnownOf(Property property)
{
    for (const Known& known : kKnown)
        if (known.property == property)
            return &known;
    return nullptr;
}

// The kinds of phones and e-mails that a field shows, as a vCard and as a person names them.
struct Kind {
    std::string_view type;
    std::string_view word;
};
constexpr Kind kKinds[] = {
    {"home", "home"}, {"work", "work"}, {"cell", "mobile"}, {"fax", "fax"}, {"pager", "pager"},
};

std::string Unescaped(std::string_view value)
{
    std::string text;
    AppendUnescaped(text, value);
    return text;
}

std::string InOneLine(std::string text)
{
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

// " (work, fax)" for the kinds that a line's parameters name; empty for none.
std::string KindsOf(std::string_view parameters)
{
    std::string words;
    Parameter parameter;
    for (Parameters all(parameters); all.Next(&parameter);) {
        std::string_view list = EqualsNoCase(parameter.name, "TYPE") ? parameter.value : std::string_view();
        // A list may be quoted as a whole.
        if (list.size() > 1 && list.front() == '"' && list.back() == '"')
            list = list.substr(1, list.size() - 2);
        while (!list.empty()) {
            const std::string_view item = TakeListItem(&list);
            for (const Kind& kind : kKinds)
                if (EqualsNoCase(item, kind.type))
                    words.append(words.empty() ? " (" : ", ").append(kind.word);
        }
    }
    return words.empty() ? words : words + ")";
}

std::string_view TypeOf(std::string_view word)
{
    for (const Kind& kind : kKinds)
        if (word == kind.word)
            return kind.type;
    return {};
}

// Takes " (work, fax)" off the text's end; the list of types it stands for, empty when it is something else.
std::string TakeKinds(std::string_view* text)
{
    const size_t open = text->rfind(" (");
    if (open == std::string_view::npos || !text->ends_with(')'))
        return {};
    std::string_view words = text->substr(open + 2, text->size() - open - 3);
    std::string types;
    while (!words.empty()) {
        const size_t end = words.find(", ");
        const std::string_view type = TypeOf(words.substr(0, end));
        if (type.empty())
            return {};
        types.append(types.empty() ? "" : ",").append(type);
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 2);
    }
    if (!types.empty())
        *text = text->substr(0, open);
    return types;
}

std::string ReachText(Property property, const VCard::Line& line)
{
    constexpr std::string_view kTel = "tel:";
    std::string text = InOneLine(Unescaped(line.value));
    if (property == Property::Phone && StartsWithNoCase(text, kTel))
        text.erase(0, kTel.size());
    return text.empty() ? text : text + KindsOf(line.parameters);
}

// Post box, extension, street; then the code with the place; region; country: what there is, one on a line.
std::string AddressText(const VCard::Line& line)
{
    enum { PostBox, Extension, Street, Locality, Region, Code, Country, kParts };
    std::string parts[kParts];
    for (size_t i = 0; i < kParts; ++i)
        AppendUnescaped(parts[i], Component(line.value, i));
    if (!parts[Code].empty() && !parts[Locality].empty())
        parts[Locality].insert(0, parts[Code] + " ");
    else
        parts[Locality] += parts[Code];
    std::string text;
    for (const int part : {PostBox, Extension, Street, Locality, Region, Country})
        if (!parts[part].empty())
            text.append(text.empty() ? "" : "\n").append(parts[part]);
    return text.empty() ? ParameterText(FindParameter(line.parameters, "LABEL")) : text;
}

std::string BirthdayText(const VCard::Line& line)
{
    std::string text = InOneLine(Unescaped(line.value));
    const bool isText = EqualsNoCase(FindParameter(line.parameters, "VALUE"), "text");
    return isText ? text : ReadableDate(text);
}

void AppendReach(std::string& out, std::string_view text)
{
    const std::string types = TakeKinds(&text);
    if (!types.empty())
        out.append(";TYPE=").append(types);
    out += ':';
    AppendEscaped(out, text);
}

void AppendBirthday(std::string& out, std::string_view text)
{
    out += IsDate(text) ? ":" : ";VALUE=text:";
    AppendEscaped(out, IsDate(text) ? CompactDate(text) : std::string(text));
}

} // namespace

Property PropertyOf(std::string_view name)
{
    for (const Known& known : kKnown)
        if (name.size() == known.name.size() && (name[0] | 0x20) == (known.name[0] | 0x20) &&
            EqualsNoCase(name, known.name))
            return known.property;
    return Property::Other;
}

Field FieldOf(Property property)
{
    const Known* known = KnownOf(property);
    return known ? known->field : Field::Extra;
}

std::string FirstNameOf(const VCard::Line& line)
{
    return InOneLine(Unescaped(Component(line.value, 1)));
}

std::string FieldText(Property property, const VCard::Line& line)
{
    switch (property) {
    case Property::Name:
    case Property::Company: return InOneLine(Unescaped(Component(line.value, 0)));
    case Property::Email:
    case Property::Phone: return ReachText(property, line);
    case Property::Address: return AddressText(line);
    case Property::Birthday: return BirthdayText(line);
    case Property::Note: return Unescaped(line.value);
    default: return InOneLine(Unescaped(line.value));
    }
}

void AppendLine(std::string& out, Property property, std::string_view text)
{
    const Known* known = KnownOf(property);
    if (text.empty() || !known)
        return;
    out += known->name;
    switch (property) {
    case Property::Email:
    case Property::Phone: AppendReach(out, text); break;
    case Property::Birthday: AppendBirthday(out, text); break;
    case Property::Address:
        out += ":;;";
        AppendEscaped(out, text);
        out += ";;;;";
        break;
    default: out += ':'; AppendEscaped(out, text);
    }
}

void AppendNameLine(std::string& out, std::string_view lastName, std::string_view firstName)
{
    if (lastName.empty() && firstName.empty())
        return;
    out += "N:";
    AppendEscaped(out, lastName);
    out += ';';
    AppendEscaped(out, firstName);
    out += ";;;";
}

} // namespace addrbook
