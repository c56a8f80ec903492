// A card as a contact. The other way is in writer.h.
#pragma once

#include "formats/vcard/contact.h"
#include "formats/vcard/card.h"
#include "formats/vcard/fields.h"

namespace vcard {

// A card as it was read: the contact that it makes, and which of the names the card itself gives.
struct ImportedCard {
    Contact contact;
    std::string formattedName; // the card's own; empty: it has none
    bool hasFileAs = false;    // the card says it; otherwise it follows from the names
};

// Makes contacts of cards, one after the other; keeps its memory from one to the next.
class ContactReader {
  public:
    // What the fields have no place for goes to Field::Extra. false when the card names nobody: it has
    // neither a name nor a company, e-mail or phone.
    [[nodiscard]] bool Read(const Card& card, Contact* contact);
    // The same, with what the card says of the names itself.
    [[nodiscard]] bool Read(const Card& card, ImportedCard* imported);

  private:
    void Take(const Card::Line& line);
    void TakeName(const Card::Line& line);
    void TakeOne(Property property, const Card::Line& line);
    void TakeAnother(Property property, const Card::Line& line);
    void TakeOneOfMany(Property property, const Card::Line& line);
    bool Finish();
    void Keep(std::string_view whole);
    void KeepUnlessSaid(std::string_view whole, Property property, std::string_view text);
    bool IsFirst(Property property);

    Contact* m_contact = nullptr;
    unsigned m_seen = 0;
    std::string m_said; // the line that the field alone stands for
    std::string m_formattedName;
    std::string m_formattedNameLine;
    std::string m_givenFormattedName; // the card's own
    bool m_hasFileAs = false;         // says it itself
    bool m_hasMoreFormattedNames = false;
};

} // namespace vcard
