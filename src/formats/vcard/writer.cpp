#include "formats/vcard/writer.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "formats/vcard/contact_names.h"
#include "formats/vcard/fields.h"

namespace vcard {

namespace {

constexpr size_t kLineBytes = 75;
constexpr const char* kLineEnd = "\r\n";

// An extra line, until it is written.
struct ExtraLine {
    Card::Line line;
    Property property;
    bool isWritten = false;
    ExtraLine* next = nullptr; // that says the same of the same property
};

// Another program may have written what is no content line, or what would end the card.
std::vector<ExtraLine> ExtraLinesOf(const Contact& contact)
{
    std::vector<ExtraLine> lines;
    ForEachLine(contact[Field::Extra], [&](std::string_view whole) {
        LinePlaces places;
        if (!FindPlaces(whole, &places))
            return;
        const Card::Line line = Card::LineOf(whole, places);
        if (!IsFrame(line.name))
            lines.push_back({line, PropertyOf(line.name)});
    });
    return lines;
}

// Not within a character: its other bytes begin with the bits 10.
size_t FoldAt(std::string_view line, size_t room)
{
    if (line.size() <= room)
        return line.size();
    size_t end = room;
    while (end > 1 && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80)
        --end;
    return end > 1 ? end : room;
}

// The lines of a property that has many, by what they say: a card may have thousands of them, each of which
// would be looked for among all.
class SayingLines {
  public:
    SayingLines(Property property, std::vector<ExtraLine>& lines)
    {
        for (size_t i = lines.size(); i-- > 0;)
            if (lines[i].property == property)
                lines[i].next = std::exchange(m_first[FieldText(property, lines[i].line)], &lines[i]);
    }

    // The first one that says this and was not taken; null for none.
    ExtraLine* Take(std::string_view text)
    {
        const auto found = m_first.find(std::string(text));
        if (found == m_first.end() || !found->second)
            return nullptr;
        return std::exchange(found->second, found->second->next);
    }

  private:
    std::unordered_map<std::string, ExtraLine*> m_first;
};

class CardWriter {
  public:
    CardWriter(std::string& out, const Contact& contact)
        : m_out(out), m_contact(contact), m_extra(ExtraLinesOf(contact))
    {}

    void Write();

  private:
    void PutLine(std::string_view line);
    void PutFormattedName();
    void PutName();
    void PutField(Property property, std::string_view text);
    void PutFields(Property property, std::string_view texts);
    void PutRest();
    // The first line of the property that was not written and says this; null for none.
    template <typename Says> ExtraLine* Find(Property property, Says says)
    {
        for (ExtraLine& extra : m_extra)
            if (extra.property == property && !extra.isWritten && says(extra.line))
                return &extra;
        return nullptr;
    }
    // Writes the extra line, or when there is none the plain one.
    void PutEither(ExtraLine* extra)
    {
        if (extra)
            extra->isWritten = true;
        PutLine(extra ? extra->line.whole : std::string_view(m_plain));
    }

    std::string& m_out;
    const Contact& m_contact;
    std::vector<ExtraLine> m_extra;
    std::string m_plain;
};

void CardWriter::PutLine(std::string_view line)
{
    if (line.empty())
        return;
    size_t end = FoldAt(line, kLineBytes);
    m_out.append(line.substr(0, end)).append(kLineEnd);
    for (line.remove_prefix(end); !line.empty(); line.remove_prefix(end)) {
        end = FoldAt(line, kLineBytes - 1);
        m_out.append(" ").append(line.substr(0, end)).append(kLineEnd);
    }
}

// A formatted name that was kept is the right one: an edit of the name takes it away.
void CardWriter::PutFormattedName()
{
    m_plain.clear();
    AppendLine(m_plain, Property::FormattedName, FormattedNameOf(m_contact));
    ExtraLine* extra = Find(Property::FormattedName, [](const Card::Line&) { return true; });
    const std::string known =
        extra ? FieldText(Property::FormattedName, extra->line) : FormattedNameOf(m_contact);
    if (m_plain.empty())
        m_plain = "FN:"; // no card is without it
    PutEither(extra);
    m_plain.clear();
    if (m_contact[Field::FileAs] != FileAsOf(m_contact, known))
        AppendLine(m_plain, Property::FileAs, m_contact[Field::FileAs]);
    PutLine(m_plain);
}

void CardWriter::PutName()
{
    m_plain.clear();
    AppendNameLine(m_plain, m_contact[Field::LastName], m_contact[Field::FirstName]);
    PutEither(Find(Property::Name, [this](const Card::Line& line) {
        return FieldText(Property::Name, line) == m_contact[Field::LastName] &&
               FirstNameOf(line) == m_contact[Field::FirstName];
    }));
}

void CardWriter::PutField(Property property, std::string_view text)
{
    m_plain.clear();
    AppendLine(m_plain, property, text);
    PutEither(Find(property, [&](const Card::Line& line) { return FieldText(property, line) == text; }));
}

void CardWriter::PutFields(Property property, std::string_view texts)
{
    SayingLines lines(property, m_extra);
    ForEachLine(texts, [&](std::string_view text) {
        m_plain.clear();
        AppendLine(m_plain, property, text);
        PutEither(lines.Take(text));
    });
}

// A phone or an e-mail that the field no longer has is gone; any other line has nothing to do with a field.
void CardWriter::PutRest()
{
    for (const ExtraLine& extra : m_extra)
        if (!extra.isWritten && !HasMany(extra.property) && extra.property != Property::FileAs)
            PutLine(extra.line.whole);
}

void CardWriter::Write()
{
    PutLine("BEGIN:VCARD");
    PutLine("VERSION:4.0");
    PutFormattedName();
    PutName();
    for (const Property property : {Property::Company, Property::JobTitle, Property::Email, Property::Phone,
                                    Property::Address, Property::Birthday, Property::Note}) {
        const std::string& text = m_contact[FieldOf(property)];
        if (HasMany(property))
            PutFields(property, text);
        else
            PutField(property, text);
    }
    PutRest();
    PutLine("END:VCARD");
}

} // namespace

void AppendCard(std::string& out, const Contact& contact)
{
    CardWriter(out, contact).Write();
}

} // namespace vcard
