#include "addrbook/vcard_contact.h"

#include "addrbook/contact_names.h"
#include "addrbook/vcard_fields.h"

namespace addrbook {

namespace {

// Builds a contact line by line.
class ContactBuilder {
  public:
    explicit ContactBuilder(Contact* contact) : m_contact(*contact) {}

    void Take(const VCard::Line& line);
    bool Finish();

  private:
    void TakeName(const VCard::Line& line);
    void TakeOne(Property property, const VCard::Line& line);
    void TakeOneOfMany(Property property, const VCard::Line& line);
    void Keep(std::string_view whole);
    void KeepUnless(std::string_view whole) // unless the field says it all
    {
        if (whole != m_said)
            Keep(whole);
    }
    bool IsFirst(Property property)
    {
        const unsigned bit = 1u << static_cast<unsigned>(property);
        const bool isFirst = (m_seen & bit) == 0;
        m_seen |= bit;
        return isFirst;
    }

    Contact& m_contact;
    unsigned m_seen = 0;
    std::string m_said;
    std::string m_formattedName;
    std::string m_formattedNameLine;
    bool m_hasMoreFormattedNames = false;
};

void ContactBuilder::Keep(std::string_view whole)
{
    std::string& extra = m_contact[Field::Extra];
    extra.append(extra.empty() ? "" : "\n").append(whole);
}

void ContactBuilder::TakeName(const VCard::Line& line)
{
    m_contact[Field::LastName] = FieldText(Property::Name, line);
    m_contact[Field::FirstName] = FirstNameOf(line);
    m_said.clear();
    AppendNameLine(m_said, m_contact[Field::LastName], m_contact[Field::FirstName]);
    KeepUnless(line.whole);
}

void ContactBuilder::TakeOne(Property property, const VCard::Line& line)
{
    std::string& text = m_contact[FieldOf(property)];
    text = FieldText(property, line);
    m_said.clear();
    AppendLine(m_said, property, text);
    KeepUnless(line.whole);
}

void ContactBuilder::TakeOneOfMany(Property property, const VCard::Line& line)
{
    const std::string text = FieldText(property, line);
    std::string& all = m_contact[FieldOf(property)];
    if (!text.empty())
        all.append(all.empty() ? "" : "\n").append(text);
    m_said.clear();
    AppendLine(m_said, property, text);
    KeepUnless(line.whole);
}

void ContactBuilder::Take(const VCard::Line& line)
{
    const Property property = PropertyOf(line.name);
    if (property == Property::Other) {
        if (!EqualsNoCase(line.name, "VERSION"))
            Keep(line.whole);
    } else if (HasMany(property)) {
        TakeOneOfMany(property, line);
    } else if (!IsFirst(property)) {
        m_hasMoreFormattedNames |= property == Property::FormattedName;
        Keep(line.whole);
    } else if (property == Property::FileAs) {
        m_contact[Field::FileAs] = FieldText(property, line);
    } else if (property == Property::FormattedName) {
        m_formattedName = FieldText(property, line);
        m_formattedNameLine = line.whole;
    } else if (property == Property::Name) {
        TakeName(line);
    } else {
        TakeOne(property, line);
    }
}

// What the contact is called hangs on all the other lines.
bool ContactBuilder::Finish()
{
    std::string& fileAs = m_contact[Field::FileAs];
    if (fileAs.empty())
        fileAs = FileAsOf(m_contact, m_formattedName);
    m_said.clear();
    AppendLine(m_said, Property::FormattedName, FormattedNameOf(m_contact));
    if (!m_formattedNameLine.empty() && (m_hasMoreFormattedNames || m_formattedNameLine != m_said)) {
        std::string& extra = m_contact[Field::Extra];
        extra.insert(0, m_formattedNameLine + (extra.empty() ? "" : "\n"));
    }
    return !fileAs.empty();
}

} // namespace

bool ReadContact(const VCard& card, Contact* contact)
{
    for (std::string& text : contact->texts)
        text.clear();
    ContactBuilder builder(contact);
    for (size_t i = 0; i < card.Count(); ++i)
        builder.Take(card.At(i));
    return builder.Finish();
}

} // namespace addrbook
