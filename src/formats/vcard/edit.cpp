#include "formats/vcard/edit.h"

#include "formats/vcard/fields.h"

namespace vcard {

namespace {

bool HasNames(const Card::Line& line, const Contact& contact)
{
    return FieldText(Property::Name, line) == contact[Field::LastName] &&
           FirstNameOf(line) == contact[Field::FirstName];
}

bool NamesDiffer(const Contact& a, const Contact& b)
{
    return a[Field::LastName] != b[Field::LastName] || a[Field::FirstName] != b[Field::FirstName];
}

// The new names in the place of the old ones; middle names and titles stay.
std::string WithNames(const Card::Line& line, const Contact& contact)
{
    std::string value;
    AppendEscaped(value, contact[Field::LastName]);
    value += ';';
    AppendEscaped(value, contact[Field::FirstName]);
    const size_t rest = ComponentStart(line.value, 2);
    value += rest == std::string_view::npos ? ";;;" : ";" + std::string(line.value.substr(rest));
    return std::string(line.whole.substr(0, line.whole.size() - line.value.size())) + value;
}

// The new text behind what the line had in front of its value; nothing where that spoke of the old text.
std::string WithText(Property property, const Card::Line& line, const std::string& text)
{
    const bool speaksOfOld =
        property == Property::Birthday || !FindParameter(line.parameters, "LABEL").empty() || text.empty();
    if (speaksOfOld)
        return {};
    std::string plain;
    AppendLine(plain, property, text);
    const size_t colon = plain.find(':');
    return std::string(line.whole.substr(0, line.whole.size() - line.value.size())) + plain.substr(colon + 1);
}

// A contact without names goes by File As.
bool IsCalledOtherwise(const Contact& before, const Contact& after)
{
    const bool hasNames = !after[Field::LastName].empty() || !after[Field::FirstName].empty();
    return NamesDiffer(before, after) || (!hasNames && before[Field::FileAs] != after[Field::FileAs]);
}

// The line as it is to be kept; empty to drop it.
std::string Followed(const Card::Line& line, const Contact& before, const Contact& after)
{
    const Property property = PropertyOf(line.name);
    if (property == Property::Other || HasMany(property) || property == Property::FileAs)
        return std::string(line.whole);
    if (property == Property::FormattedName)
        return IsCalledOtherwise(before, after) ? std::string() : std::string(line.whole);
    if (property == Property::Name)
        return HasNames(line, before) && NamesDiffer(before, after) ? WithNames(line, after)
                                                                    : std::string(line.whole);
    const Field field = FieldOf(property);
    const bool told = FieldText(property, line) == before[field] && before[field] != after[field];
    return told ? WithText(property, line, after[field]) : std::string(line.whole);
}

} // namespace

void FollowEdit(const Contact& before, Contact* after)
{
    std::string extra;
    bool isChanged = false;
    ForEachLine(before[Field::Extra], [&](std::string_view whole) {
        LinePlaces places;
        // What is no card's line speaks of nothing.
        const std::string line = FindPlaces(whole, &places)
                                     ? Followed(Card::LineOf(whole, places), before, *after)
                                     : std::string(whole);
        isChanged = isChanged || line != whole;
        if (!line.empty())
            extra.append(extra.empty() ? "" : "\n").append(line);
    });
    (*after)[Field::Extra] = isChanged ? extra : before[Field::Extra];
}

} // namespace vcard
