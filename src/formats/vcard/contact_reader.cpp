#include "formats/vcard/contact_reader.h"

#include <algorithm>

#include "formats/vcard/contact_names.h"

namespace vcard {

namespace {

// A line that its field says for certain, without making the line that the field stands for.
bool IsPlain(Property property, const Card::Line& line)
{
    const bool isAddress = property == Property::Phone && StartsWithNoCase(line.value, "tel:");
    if (isAddress || property == Property::Address || property == Property::Birthday)
        return false;
    const bool isBare = line.group.empty() && (line.parameters.empty() || IsKind(property, line.parameters));
    return isBare && std::none_of(line.value.begin(), line.value.end(), NeedsEscape) && !line.value.empty() &&
           line.value.back() != ')' && NameOf(property) == line.name;
}

} // namespace

bool ContactReader::Read(const Card& card, Contact* contact)
{
    m_contact = contact;
    for (std::string& text : contact->texts)
        text.clear();
    m_seen = 0;
    m_formattedName.clear();
    m_formattedNameLine.clear();
    m_hasMoreFormattedNames = false;
    for (size_t i = 0; i < card.Count(); ++i)
        Take(card.At(i));
    return Finish();
}

bool ContactReader::Read(const Card& card, ImportedCard* imported)
{
    const bool isRead = Read(card, &imported->contact);
    imported->formattedName = m_givenFormattedName;
    imported->hasFileAs = m_hasFileAs;
    return isRead;
}

void ContactReader::Keep(std::string_view whole)
{
    std::string& extra = (*m_contact)[Field::Extra];
    extra.append(extra.empty() ? "" : "\n").append(whole);
}

void ContactReader::KeepUnlessSaid(std::string_view whole, Property property, std::string_view text)
{
    m_said.clear();
    AppendLine(m_said, property, text);
    if (whole != m_said)
        Keep(whole);
}

bool ContactReader::IsFirst(Property property)
{
    const unsigned bit = 1u << static_cast<unsigned>(property);
    const bool isFirst = (m_seen & bit) == 0;
    m_seen |= bit;
    return isFirst;
}

void ContactReader::TakeName(const Card::Line& line)
{
    std::string& last = (*m_contact)[Field::LastName];
    std::string& first = (*m_contact)[Field::FirstName];
    AppendFieldText(last, Property::Name, line);
    AppendFirstName(first, line);
    m_said.clear();
    AppendNameLine(m_said, last, first);
    if (line.whole != m_said)
        Keep(line.whole);
}

void ContactReader::TakeOne(Property property, const Card::Line& line)
{
    std::string& text = (*m_contact)[FieldOf(property)];
    AppendFieldText(text, property, line);
    if (!IsPlain(property, line))
        KeepUnlessSaid(line.whole, property, text);
}

void ContactReader::TakeOneOfMany(Property property, const Card::Line& line)
{
    std::string& all = (*m_contact)[FieldOf(property)];
    const size_t before = all.size();
    all.append(before ? "\n" : "");
    const size_t start = all.size();
    AppendFieldText(all, property, line);
    if (all.size() == start)
        return all.resize(before); // a phone without a number is none
    if (!IsPlain(property, line))
        KeepUnlessSaid(line.whole, property, std::string_view(all).substr(start));
}

// One more line for a field that holds only one.
void ContactReader::TakeAnother(Property property, const Card::Line& line)
{
    const Contact& contact = *m_contact;
    if (property == Property::FileAs)
        return; // ours, and the first one counts
    m_said.clear();
    if (property == Property::Name)
        AppendNameLine(m_said, contact[Field::LastName], contact[Field::FirstName]);
    else if (property == Property::FormattedName)
        m_hasMoreFormattedNames = true;
    else
        AppendLine(m_said, property, contact[FieldOf(property)]);
    if (line.whole != m_said)
        Keep(line.whole);
}

void ContactReader::Take(const Card::Line& line)
{
    const Property property = PropertyOf(line.name);
    if (property == Property::Other) {
        if (!IsFrame(line.name))
            Keep(line.whole);
    } else if (HasMany(property)) {
        TakeOneOfMany(property, line);
    } else if (!IsFirst(property)) {
        TakeAnother(property, line);
    } else if (property == Property::FileAs) {
        AppendFieldText((*m_contact)[Field::FileAs], property, line);
    } else if (property == Property::FormattedName) {
        AppendFieldText(m_formattedName, property, line);
        m_formattedNameLine = line.whole;
    } else if (property == Property::Name) {
        TakeName(line);
    } else {
        TakeOne(property, line);
    }
}

// What the contact is called hangs on all the other lines.
bool ContactReader::Finish()
{
    std::string& fileAs = (*m_contact)[Field::FileAs];
    m_hasFileAs = !fileAs.empty();
    if (!m_hasFileAs)
        AppendFileAs(fileAs, *m_contact, m_formattedName);
    m_said.clear();
    m_givenFormattedName = m_formattedName;
    m_formattedName.clear();
    AppendFormattedName(m_formattedName, *m_contact);
    AppendLine(m_said, Property::FormattedName, m_formattedName);
    if (!m_formattedNameLine.empty() && (m_hasMoreFormattedNames || m_formattedNameLine != m_said)) {
        std::string& extra = (*m_contact)[Field::Extra];
        extra.insert(0, m_formattedNameLine + (extra.empty() ? "" : "\n"));
    }
    return !fileAs.empty();
}

} // namespace vcard
