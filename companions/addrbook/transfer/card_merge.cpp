#include "addrbook/transfer/card_merge.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "addrbook/transfer/reach_merge.h"
#include "formats/vcard/contact_names.h"
#include "formats/vcard/contact_reader.h"
#include "formats/vcard/edit.h"
#include "formats/vcard/fields.h"

namespace addrbook {

namespace {

constexpr vcard::Property kSingle[] = {vcard::Property::Company, vcard::Property::JobTitle,
                                       vcard::Property::Address, vcard::Property::Birthday,
                                       vcard::Property::Note};
constexpr const char* kFormattedNameKey = "fn";

struct ExtraLine {
    vcard::Card::Line line;
    vcard::Property property;
};

std::vector<ExtraLine> LinesOf(std::string_view extra)
{
    std::vector<ExtraLine> lines;
    vcard::ForEachLine(extra, [&](std::string_view whole) {
        vcard::LinePlaces places;
        if (!vcard::FindPlaces(whole, &places))
            return;
        const vcard::Card::Line line = vcard::Card::LineOf(whole, places);
        lines.push_back({line, vcard::PropertyOf(line.name)});
    });
    return lines;
}

std::string Lower(std::string_view text)
{
    std::string lower(text);
    for (char& character : lower)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    return lower;
}

// The kinds that the parameters name, in one order; a preference is none.
std::string KindsOf(std::string_view parameters)
{
    std::vector<std::string> kinds;
    vcard::Parameter parameter;
    for (vcard::Parameters all(parameters); all.Next(&parameter);)
        for (std::string_view list = vcard::EqualsNoCase(parameter.name, "TYPE") ? parameter.value : "";
             !list.empty();)
            if (std::string kind = Lower(vcard::TakeListItem(&list)); kind != "pref")
                kinds.push_back(std::move(kind));
    std::sort(kinds.begin(), kinds.end());
    std::string joined;
    for (const std::string& kind : kinds)
        joined += ";" + kind;
    return joined;
}

// Lines of one key take each other's place. Phones and e-mails are known by what they say. A line of a
// program's own in a group says something about that group.
std::string KeyOf(const ExtraLine& extra)
{
    const std::string name = Lower(extra.line.name);
    if (extra.property == vcard::Property::FormattedName)
        return kFormattedNameKey;
    if (vcard::HasMany(extra.property))
        return name + "\n" + vcard::FieldText(extra.property, extra.line);
    const bool isAboutGroup = !extra.line.group.empty() && name.starts_with("x-");
    return (isAboutGroup ? Lower(extra.line.group) + "." : "") + name + KindsOf(extra.line.parameters);
}

bool IsUid(const ExtraLine& extra)
{
    return vcard::EqualsNoCase(extra.line.name, "UID");
}

// An empty value is as good as no line; an address may have its text in a parameter.
bool SaysNothing(const ExtraLine& extra)
{
    return extra.line.value.find_first_not_of("; ") == std::string_view::npos &&
           vcard::FindParameter(extra.line.parameters, "LABEL").empty();
}

bool NamesDiffer(const vcard::Contact& a, const vcard::Contact& b)
{
    return a[vcard::Field::LastName] != b[vcard::Field::LastName] ||
           a[vcard::Field::FirstName] != b[vcard::Field::FirstName];
}

// The name that the contact is shown under in other programs.
std::string KnownName(const vcard::Contact& contact)
{
    for (const ExtraLine& extra : LinesOf(contact[vcard::Field::Extra]))
        if (extra.property == vcard::Property::FormattedName)
            return vcard::FieldText(extra.property, extra.line);
    return vcard::FormattedNameOf(contact);
}

class Merge {
  public:
    Merge(const vcard::Contact& stored, const vcard::ImportedCard& card)
        : m_stored(stored), m_card(card), m_cardLines(LinesOf(card.contact[vcard::Field::Extra]))
    {}
    vcard::Contact Run();

  private:
    void MergeFields();
    void MergeFileAs();
    std::string WithMergedNames(const ExtraLine& extra, const vcard::Contact& before) const;
    void TakeCardLines();
    void TakeFormattedName();
    void AddCardLine(const std::string& key, std::string whole);
    bool IsOutdated(const ExtraLine& extra) const;
    void PutStoredLines();
    void PutNewLines();
    void Put(std::string_view whole);

    // The lines of the card with one key, and how many of them have been put.
    struct CardLines {
        std::vector<std::string> lines;
        size_t put = 0;
    };

    const vcard::Contact& m_stored;
    const vcard::ImportedCard& m_card;
    const std::vector<ExtraLine> m_cardLines; // the card's extra
    vcard::Contact m_merged;
    std::unordered_set<std::string> m_reached; // phones and e-mails of the merged contact, as lines say them
    std::unordered_set<std::string> m_reachedBefore;
    std::unordered_map<std::string, CardLines> m_lines;
    std::vector<std::string> m_keys; // in the order of the card
};

void Merge::MergeFields()
{
    const vcard::Contact& card = m_card.contact;
    for (const vcard::Field field :
         {vcard::Field::FirstName, vcard::Field::LastName, vcard::Field::Company, vcard::Field::JobTitle,
          vcard::Field::Address, vcard::Field::Birthday, vcard::Field::Note})
        m_merged[field] = card[field].empty() ? m_stored[field] : card[field];
    m_merged[vcard::Field::Emails] =
        MergedReaches(vcard::Property::Email, m_stored[vcard::Field::Emails], card[vcard::Field::Emails]);
    m_merged[vcard::Field::Phones] =
        MergedReaches(vcard::Property::Phone, m_stored[vcard::Field::Phones], card[vcard::Field::Phones]);
}

// One that somebody has chosen stays; one that follows from the names goes on following them.
void Merge::MergeFileAs()
{
    const std::string& stored = m_stored[vcard::Field::FileAs];
    const std::string known = KnownName(m_stored);
    const bool isOwn = stored.empty() || stored == vcard::FileAsOf(m_stored, known);
    if (m_card.hasFileAs)
        m_merged[vcard::Field::FileAs] = m_card.contact[vcard::Field::FileAs];
    else if (isOwn)
        m_merged[vcard::Field::FileAs] =
            vcard::FileAsOf(m_merged, m_card.formattedName.empty() ? known : m_card.formattedName);
    else
        m_merged[vcard::Field::FileAs] = stored;
}

// A line that tells the names of before tells the merged ones; what else it says stays.
std::string Merge::WithMergedNames(const ExtraLine& extra, const vcard::Contact& before) const
{
    vcard::Contact own, followed;
    for (const vcard::Field field : {vcard::Field::FirstName, vcard::Field::LastName}) {
        own[field] = before[field];
        followed[field] = m_merged[field];
    }
    own[vcard::Field::Extra] = extra.line.whole;
    vcard::FollowEdit(own, &followed);
    return followed[vcard::Field::Extra];
}

void Merge::AddCardLine(const std::string& key, std::string whole)
{
    const auto [place, isNew] = m_lines.try_emplace(key);
    if (isNew)
        m_keys.push_back(key);
    if (!whole.empty())
        place->second.lines.push_back(std::move(whole));
}

// The card's own name holds, also where the merged fields would make another one.
void Merge::TakeFormattedName()
{
    if (m_card.formattedName.empty())
        return;
    bool isKept = false;
    for (const ExtraLine& extra : m_cardLines) {
        isKept |= extra.property == vcard::Property::FormattedName;
        if (extra.property == vcard::Property::FormattedName)
            AddCardLine(kFormattedNameKey, std::string(extra.line.whole));
    }
    std::string line;
    if (!isKept && m_card.formattedName != vcard::FormattedNameOf(m_merged))
        vcard::AppendLine(line, vcard::Property::FormattedName, m_card.formattedName);
    if (!isKept)
        AddCardLine(kFormattedNameKey, line);
}

void Merge::TakeCardLines()
{
    TakeFormattedName();
    for (const ExtraLine& extra : m_cardLines) {
        if (IsUid(extra) || SaysNothing(extra) || extra.property == vcard::Property::FormattedName)
            continue;
        const std::string key = KeyOf(extra);
        if (vcard::HasMany(extra.property) && !m_reached.count(key))
            continue;
        AddCardLine(key, extra.property == vcard::Property::Name ? WithMergedNames(extra, m_card.contact)
                                                                 : std::string(extra.line.whole));
    }
}

// Tells of a text that the card has replaced.
bool Merge::IsOutdated(const ExtraLine& extra) const
{
    if (extra.property == vcard::Property::FormattedName)
        return m_card.formattedName.empty() && NamesDiffer(m_stored, m_merged);
    if (vcard::HasMany(extra.property)) {
        const std::string key = KeyOf(extra);
        return m_reachedBefore.count(key) && !m_reached.count(key);
    }
    if (std::find(std::begin(kSingle), std::end(kSingle), extra.property) == std::end(kSingle))
        return false;
    const vcard::Field field = vcard::FieldOf(extra.property);
    return m_stored[field] != m_merged[field] &&
           vcard::FieldText(extra.property, extra.line) == m_stored[field];
}

void Merge::Put(std::string_view whole)
{
    std::string& extra = m_merged[vcard::Field::Extra];
    extra.append(extra.empty() ? "" : "\n").append(whole);
}

// In the order of what is stored, so that a card that says the same changes nothing.
void Merge::PutStoredLines()
{
    for (const ExtraLine& extra : LinesOf(m_stored[vcard::Field::Extra])) {
        const auto found = IsUid(extra) ? m_lines.end() : m_lines.find(KeyOf(extra));
        if (found != m_lines.end()) {
            CardLines& card = found->second;
            if (card.put < card.lines.size())
                Put(card.lines[card.put++]);
        } else if (!IsOutdated(extra)) {
            Put(extra.property == vcard::Property::Name ? WithMergedNames(extra, m_stored)
                                                        : std::string(extra.line.whole));
        }
    }
}

void Merge::PutNewLines()
{
    for (const std::string& key : m_keys) {
        CardLines& card = m_lines[key];
        while (card.put < card.lines.size())
            Put(card.lines[card.put++]);
    }
}

vcard::Contact Merge::Run()
{
    MergeFields();
    MergeFileAs();
    const auto keep = [](std::unordered_set<std::string>* keys, const vcard::Contact& contact) {
        vcard::ForEachLine(contact[vcard::Field::Emails],
                           [&](std::string_view text) { keys->insert("email\n" + std::string(text)); });
        vcard::ForEachLine(contact[vcard::Field::Phones],
                           [&](std::string_view text) { keys->insert("tel\n" + std::string(text)); });
    };
    keep(&m_reached, m_merged);
    keep(&m_reachedBefore, m_stored);
    TakeCardLines();
    PutStoredLines();
    PutNewLines();
    return std::move(m_merged);
}

// Tells which program has written the card and when, not about whom.
bool IsAboutCard(const ExtraLine& extra)
{
    return vcard::EqualsNoCase(extra.line.name, "REV") || vcard::EqualsNoCase(extra.line.name, "PRODID");
}

std::vector<std::string> TellingLines(const vcard::Contact& contact)
{
    std::vector<std::string> lines;
    for (const ExtraLine& extra : LinesOf(contact[vcard::Field::Extra]))
        if (!IsAboutCard(extra))
            lines.emplace_back(extra.line.whole);
    return lines;
}

// The lines of one that the other lacks; each counts as often as it is there.
std::string LinesBeside(const std::vector<std::string>& lines, const std::vector<std::string>& others)
{
    constexpr size_t kLongest = 100;
    std::unordered_map<std::string_view, int> counts;
    for (const std::string& other : others)
        ++counts[other];
    std::string text;
    for (const std::string& line : lines) {
        if (--counts[line] >= 0)
            continue;
        size_t end = std::min(line.size(), kLongest);
        while (end > 0 && end < line.size() && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80)
            --end;
        text.append(text.empty() ? "" : "\n").append(line, 0, end).append(end < line.size() ? "..." : "");
    }
    return text;
}

} // namespace

vcard::Contact MergedWith(const vcard::Contact& stored, const vcard::ImportedCard& card)
{
    return Merge(stored, card).Run();
}

bool IsChange(const vcard::Contact& stored, const vcard::Contact& merged)
{
    const bool sameFields = std::equal(stored.texts.begin(), stored.texts.end() - 1, merged.texts.begin());
    return !sameFields || TellingLines(stored) != TellingLines(merged);
}

vcard::Contact AsNew(const vcard::ImportedCard& card)
{
    vcard::Contact contact = card.contact;
    std::string& extra = contact[vcard::Field::Extra];
    extra.clear();
    for (const ExtraLine& line : LinesOf(card.contact[vcard::Field::Extra]))
        if (!IsUid(line))
            extra.append(extra.empty() ? "" : "\n").append(line.line.whole);
    return contact;
}

std::vector<FieldChange> ChangesBetween(const vcard::Contact& stored, const vcard::Contact& merged)
{
    struct Named {
        const wchar_t* name;
        vcard::Field field;
    };
    constexpr Named kNamed[] = {
        {L"First name", vcard::Field::FirstName}, {L"Last name", vcard::Field::LastName},
        {L"Company", vcard::Field::Company},      {L"Job title", vcard::Field::JobTitle},
        {L"File As", vcard::Field::FileAs},       {L"Birthday", vcard::Field::Birthday},
        {L"E-mails", vcard::Field::Emails},       {L"Phones", vcard::Field::Phones},
        {L"Address", vcard::Field::Address},      {L"Note", vcard::Field::Note}};
    static_assert(std::size(kNamed) == vcard::kFieldCount - 1);
    std::vector<FieldChange> changes;
    for (const Named& named : kNamed)
        if (stored[named.field] != merged[named.field])
            changes.push_back({named.name, stored[named.field], merged[named.field]});
    const std::vector<std::string> before = TellingLines(stored), after = TellingLines(merged);
    if (before != after)
        changes.push_back({L"Other lines", LinesBeside(before, after), LinesBeside(after, before)});
    return changes;
}

} // namespace addrbook
