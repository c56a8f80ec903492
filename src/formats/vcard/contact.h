// A person as a card tells of one, in eleven texts that can be shown and edited. Whatever else a card says is
// kept in the last of them, so that a card that is read and written again has lost nothing.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace vcard {

enum class Field {
    FileAs,
    FirstName,
    LastName,
    Company,
    JobTitle,
    Emails, // one a line, as Phones: "anna@example.org (work)"
    Phones, // "+49 30 1234 (work, fax)"
    Address,
    Birthday, // "1985-04-15", "--04-15" without a year, or any words
    Note,
    Extra, // content lines of version 4.0, unfolded: what the other fields have no place for
};
constexpr size_t kFieldCount = 11;

// Texts in UTF-8 of any length, their lines separated by "\n"; an empty text is no value.
struct Contact {
    std::array<std::string, kFieldCount> texts;

    std::string& operator[](Field field) { return texts[static_cast<size_t>(field)]; }
    const std::string& operator[](Field field) const { return texts[static_cast<size_t>(field)]; }
    bool operator==(const Contact&) const = default;
};

// Calls action with each line of a text that is not empty.
template <typename Action> void ForEachLine(std::string_view text, Action action)
{
    while (!text.empty()) {
        const size_t end = text.find('\n');
        if (end != 0)
            action(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

} // namespace vcard
