// The fields of a contact and the lines of a vCard that tell them.
//
// A line may say more than its field: more names, a kind that the field cannot show, a preference, a group.
// Such a line is kept among the contact's extra lines and written again for as long as the field says what it
// says.
#pragma once

#include "formats/vcard/contact.h"
#include "formats/vcard/card.h"

namespace vcard {

enum class Property {
    FormattedName,
    Name,
    FileAs,
    Company,
    JobTitle,
    Email,
    Phone,
    Address,
    Birthday,
    Note,
    Other
};

// Whether the parameters of a phone or an e-mail name one kind, in the words that the writer uses.
bool IsKind(Property property, std::string_view parameters);

// Whether a line of this name belongs to what every card stands in (BEGIN, VERSION, END): never a contact's
// own.
bool IsFrame(std::string_view name);

Property PropertyOf(std::string_view name);
std::string_view NameOf(Property property); // empty for Other

// The text that a line gives to its field. A name's line gives the last name, or the first.
void AppendFieldText(std::string& out, Property property, const Card::Line& line);
void AppendFirstName(std::string& out, const Card::Line& line);
std::string FieldText(Property property, const Card::Line& line);
std::string FirstNameOf(const Card::Line& line);

// A phone or an e-mail without the kinds behind it, " (work, fax)".
std::string_view WithoutKinds(std::string_view text);

// Appends the line that says what the field says, without a line end; nothing for an empty text.
void AppendLine(std::string& out, Property property, std::string_view text);
void AppendNameLine(std::string& out, std::string_view lastName, std::string_view firstName);

// The field of a property that has one value; of one that has many the field with one of them on each line.
Field FieldOf(Property property);
inline bool HasMany(Property property)
{
    return property == Property::Email || property == Property::Phone;
}

} // namespace vcard
