#include <algorithm>
#include <vector>

#include "formats/vcard/contact_names.h"
#include "formats/vcard/charset.h"
#include "formats/vcard/contact_reader.h"
#include "formats/vcard/edit.h"
#include "formats/vcard/writer.h"
#include "formats/vcard/reader.h"
#include "mervane/values/text_codec.h"
#include "targets.h"

namespace fuzz {

namespace {

using vcard::Contact;
using vcard::Field;

struct ReadFile {
    std::vector<vcard::Contact> contacts;
    size_t cards = 0; // also those that name nobody
    size_t unreadable = 0;
    size_t errorLine = 0;
    bool operator==(const ReadFile&) const = default;
};

ReadFile ReadAll(std::string_view bytes, size_t piece)
{
    size_t place = 0;
    vcard::Reader reader([&](char* buffer, size_t size) {
        const size_t count = bytes.copy(buffer, std::min(size, piece), place);
        place += count;
        return count;
    });
    ReadFile read;
    vcard::Card card;
    vcard::ContactReader contacts;
    for (vcard::Contact contact; reader.Next(&card); ++read.cards)
        if (contacts.Read(card, &contact))
            read.contacts.push_back(contact);
    read.unreadable = reader.Unreadable();
    read.errorLine = reader.ErrorLine();
    return read;
}

std::string Written(const vcard::Contact& contact)
{
    std::string card;
    vcard::AppendCard(card, contact);
    return card;
}

// Lines of at most 75 bytes, ended with CR LF; text throughout.
bool IsWellFormed(std::string_view card)
{
    constexpr size_t kLongestLine = 75;
    while (!card.empty()) {
        const size_t end = card.find("\r\n");
        const std::string_view line = card.substr(0, end);
        if (end == std::string_view::npos || line.size() > kLongestLine ||
            line.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos)
            return false;
        card.remove_prefix(end + 2);
    }
    return true;
}

// The store keeps UTF-16 made into UTF-8 of its own.
bool SurvivesStore(const vcard::Contact& contact)
{
    return std::all_of(contact.texts.begin(), contact.texts.end(), [](const std::string& text) {
        return mervane::EncodeText(mervane::DecodeText(text)) == text;
    });
}

// The lines that no field tells stand in the order of their properties once they were written.
vcard::Contact WithSortedLines(vcard::Contact contact)
{
    std::vector<std::string> lines;
    vcard::ForEachLine(contact[vcard::Field::Extra],
                       [&](std::string_view line) { lines.emplace_back(line); });
    std::sort(lines.begin(), lines.end());
    contact[vcard::Field::Extra].clear();
    for (const std::string& line : lines)
        contact[vcard::Field::Extra].append(line).append("\n");
    return contact;
}

std::string TryContact(const vcard::Contact& contact)
{
    const std::string card = Written(contact);
    if (!IsWellFormed(card))
        return "a card that was written is not well-formed";
    if (!vcard::IsUtf8(card))
        return "a card that was written is not in UTF-8";
    if (!SurvivesStore(contact))
        return "a contact's text comes back from the store as another one";
    const ReadFile again = ReadAll(card, card.size());
    if (again.unreadable || again.contacts.size() != 1)
        return "a card that was written cannot be read";
    if (WithSortedLines(again.contacts.front()) != WithSortedLines(contact))
        return "reading what was written gives another contact";
    return Written(again.contacts.front()) == card ? "" : "a card that was read is written as another one";
}

// An edit of a field keeps what was edited.
std::string TryEdit(const vcard::Contact& before, size_t field, const char* text)
{
    vcard::Contact after = before;
    after.texts[field] = text;
    vcard::FollowEdit(before, &after);
    const ReadFile again = ReadAll(Written(after), 1000);
    if (again.unreadable || again.cards != 1)
        return "the card of an edited contact cannot be read";
    // Where a field is emptied the card's next line of the kind, if there is one, comes into its place.
    const bool isKept = !*text || (!again.contacts.empty() && again.contacts.front().texts[field] == text);
    return isKept ? "" : "an edit is not in the card: field " + std::to_string(field);
}

std::string TryEdits(const vcard::Contact& before, size_t choice)
{
    const size_t field = choice % static_cast<size_t>(vcard::Field::Extra);
    const std::string broken = TryEdit(before, field, "Edited; text, \\ with (work) signs");
    return broken.empty() ? TryEdit(before, field, "") : broken;
}

} // namespace

std::string TryVCards(std::string_view bytes)
{
    const ReadFile read = ReadAll(bytes, bytes.size());
    if (read != ReadAll(bytes, 1 + bytes.size() % 7))
        return "a file that comes in pieces reads as another one";
    for (const vcard::Contact& contact : read.contacts) {
        std::string broken = TryContact(contact);
        if (broken.empty())
            broken = TryEdits(contact, bytes.size());
        if (!broken.empty())
            return broken;
    }
    return {};
}

} // namespace fuzz
