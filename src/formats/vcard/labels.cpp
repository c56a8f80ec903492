#include "formats/vcard/labels.h"

#include <map>

namespace vcard {

namespace {

// What an address and its label have in common. Words of parameters are equal whatever their case.
std::string KeyOf(const Card::Line& line)
{
    std::string key = std::string(line.group) + std::string(line.parameters);
    for (char& character : key)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    return key;
}

// As a parameter's value, between quotes.
std::string QuotedLabel(std::string_view value)
{
    std::string text, quoted = "\"";
    AppendUnescaped(text, value);
    for (const char character : text) {
        if (character == '\n' || character == '"' || character == '^')
            quoted.append("^").append(1, character == '\n' ? 'n' : character == '"' ? '\'' : '^');
        else
            quoted += character;
    }
    return quoted + "\"";
}

std::string AddressLine(const Card::Line& address, std::string_view value, std::string_view label)
{
    std::string whole(address.group);
    whole.append(whole.empty() ? "" : ".").append("ADR").append(address.parameters);
    return whole.append(";LABEL=").append(QuotedLabel(label)).append(":").append(value);
}

} // namespace

void JoinLabels(Card* card)
{
    std::multimap<std::string, size_t> addresses;
    for (size_t i = 0; i < card->Count(); ++i) {
        const Card::Line line = card->At(i);
        if (EqualsNoCase(line.name, "ADR"))
            addresses.emplace(KeyOf(line), i);
    }
    const size_t count = card->Count();
    std::vector<bool> isJoined(count);
    for (size_t i = 0; i < count; ++i) {
        const Card::Line label = card->At(i);
        if (!EqualsNoCase(label.name, "LABEL"))
            continue;
        const auto found = addresses.find(KeyOf(label));
        isJoined[i] = found != addresses.end();
        const size_t place = isJoined[i] ? found->second : i;
        const std::string_view value = isJoined[i] ? card->At(place).value : std::string_view(";;;;;;");
        card->Replace(place, AddressLine(isJoined[i] ? card->At(place) : label, value, label.value));
        if (isJoined[i])
            addresses.erase(found);
    }
    card->Remove(isJoined);
}

} // namespace vcard
