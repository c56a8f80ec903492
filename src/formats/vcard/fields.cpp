#include "formats/vcard/fields.h"

#include <algorithm>

#include "formats/vcard/birthday.h"

namespace vcard {

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

// Unescaped, with blanks for line ends, which only an escape can bring.
void AppendInOneLine(std::string& out, std::string_view value)
{
    const size_t start = out.size();
    AppendUnescaped(out, value);
    if (value.find('\\') != std::string_view::npos)
        std::replace(out.begin() + static_cast<std::ptrdiff_t>(start), out.end(), '\n', ' ');
}

// Appends " (work, fax)" for the kinds that a line's parameters name; nothing for none.
void AppendKinds(std::string& out, std::string_view parameters)
{
    bool hasKind = false;
    Parameter parameter;
    for (Parameters all(parameters); all.Next(&parameter);) {
        std::string_view list = EqualsNoCase(parameter.name, "TYPE") ? parameter.value : std::string_view();
        // A list may be quoted as a whole.
        if (list.size() > 1 && list.front() == '"' && list.back() == '"')
            list = list.substr(1, list.size() - 2);
        while (!list.empty()) {
            const std::string_view item = TakeListItem(&list);
            for (const Kind& kind : kKinds)
                if (EqualsNoCase(item, kind.type)) {
                    out.append(hasKind ? ", " : " (").append(kind.word);
                    hasKind = true;
                }
        }
    }
    out.append(hasKind ? ")" : "");
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

void AppendReachText(std::string& out, Property property, const Card::Line& line)
{
    constexpr std::string_view kTel = "tel:";
    const bool isAddress = property == Property::Phone && StartsWithNoCase(line.value, kTel);
    const size_t start = out.size();
    AppendInOneLine(out, line.value.substr(isAddress ? kTel.size() : 0));
    if (out.size() > start && !line.parameters.empty())
        AppendKinds(out, line.parameters);
}

// Post box, extension, street; then the code with the place; region; country: what there is, one on a line.
void AppendAddressText(std::string& out, const Card::Line& line)
{
    enum { PostBox, Extension, Street, Locality, Region, Code, Country, kParts };
    std::string_view parts[kParts];
    std::string_view rest = line.value;
    for (std::string_view& part : parts) {
        part = Component(rest, 0);
        rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    }
    const size_t start = out.size();
    const auto append = [&](std::string_view part, const char* between) {
        if (part.empty())
            return;
        out.append(out.size() == start ? "" : between);
        AppendUnescaped(out, part);
    };
    for (const size_t part : {PostBox, Extension, Street, Code})
        append(parts[part], "\n");
    append(parts[Locality], parts[Code].empty() ? "\n" : " ");
    append(parts[Region], "\n");
    append(parts[Country], "\n");
    // Its line ends are written in two ways: as in a parameter and as in a value.
    if (out.size() == start)
        AppendUnescaped(out, ParameterText(FindParameter(line.parameters, "LABEL")));
}

void AppendBirthdayText(std::string& out, const Card::Line& line)
{
    const size_t start = out.size();
    AppendInOneLine(out, line.value);
    if (EqualsNoCase(FindParameter(line.parameters, "VALUE"), "text"))
        return;
    const std::string date = ReadableDate(std::string_view(out).substr(start));
    out.replace(start, std::string::npos, date);
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
    const bool isDate = IsDate(text);
    out += isDate ? ":" : ";VALUE=text:";
    AppendEscaped(out, isDate ? CompactDate(text) : std::string(text));
}

} // namespace

bool IsKind(Property property, std::string_view parameters)
{
    constexpr std::string_view kType = ";TYPE=";
    if ((property != Property::Phone && property != Property::Email) || !parameters.starts_with(kType))
        return false;
    parameters.remove_prefix(kType.size());
    return std::any_of(std::begin(kKinds), std::end(kKinds),
                       [&](const Kind& kind) { return parameters == kind.type; });
}

bool IsFrame(std::string_view name)
{
    return EqualsNoCase(name, "BEGIN") || EqualsNoCase(name, "END") || EqualsNoCase(name, "VERSION");
}

Property PropertyOf(std::string_view name)
{
    for (const Known& known : kKnown)
        if (name.size() == known.name.size() && (name[0] | 0x20) == (known.name[0] | 0x20) &&
            EqualsNoCase(name, known.name))
            return known.property;
    return Property::Other;
}

std::string_view NameOf(Property property)
{
    const Known* known = KnownOf(property);
    return known ? known->name : std::string_view();
}

Field FieldOf(Property property)
{
    const Known* known = KnownOf(property);
    return known ? known->field : Field::Extra;
}

void AppendFirstName(std::string& out, const Card::Line& line)
{
    AppendInOneLine(out, Component(line.value, 1));
}

void AppendFieldText(std::string& out, Property property, const Card::Line& line)
{
    switch (property) {
    case Property::Name:
    case Property::Company: return AppendInOneLine(out, Component(line.value, 0));
    case Property::Email:
    case Property::Phone: return AppendReachText(out, property, line);
    case Property::Address: return AppendAddressText(out, line);
    case Property::Birthday: return AppendBirthdayText(out, line);
    case Property::Note: return AppendUnescaped(out, line.value);
    default: return AppendInOneLine(out, line.value);
    }
}

std::string_view WithoutKinds(std::string_view text)
{
    (void)TakeKinds(&text);
    return text;
}

std::string FirstNameOf(const Card::Line& line)
{
    std::string text;
    AppendFirstName(text, line);
    return text;
}

std::string FieldText(Property property, const Card::Line& line)
{
    std::string text;
    AppendFieldText(text, property, line);
    return text;
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

} // namespace vcard
