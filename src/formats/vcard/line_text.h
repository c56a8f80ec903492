// The texts inside a card's content lines: escapes (RFC 6350, 3.4), compound values, parameters (RFC 6350, 5,
// with the circumflex escapes of RFC 6868). Views are into what was given.
#pragma once

#include <string>
#include <string_view>

namespace vcard {

// ASCII letters without regard to case.
bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);

// What is written with a backslash before it.
inline bool NeedsEscape(char character)
{
    return character == ',' || character == ';' || character == '\\' || character == '\n';
}

// Appends a value with its backslash escapes undone. A backslash before any other character stays.
void AppendUnescaped(std::string& out, std::string_view value);
// Appends a text as a value: backslash, comma, semicolon and line end escaped.
void AppendEscaped(std::string& out, std::string_view text);

// The part of a compound value behind so many unescaped semicolons; empty when there is none.
std::string_view Component(std::string_view value, size_t index);
// Where in the value that part begins; npos when there is none.
size_t ComponentStart(std::string_view value, size_t index);

struct Parameter {
    std::string_view name;  // empty for a bare word of version 2.1
    std::string_view value; // as written: a list with commas, quotes, circumflex escapes
};

// Walks the parameters of a line: ";TYPE=home,work;PREF=1", from the first semicolon on.
class Parameters {
  public:
    explicit Parameters(std::string_view text) : m_rest(text) {}
    bool Next(Parameter* parameter);

  private:
    std::string_view m_rest;
};

// The value of the first parameter of this name, as written; empty when there is none.
std::string_view FindParameter(std::string_view parameters, std::string_view name);
// Takes the next item off a parameter's list, as written.
std::string_view TakeListItem(std::string_view* list);
// A value that is quoted as a whole without its quotes.
std::string_view WithoutQuotes(std::string_view text);
// An item's text: without quotes, circumflex escapes undone.
std::string ParameterText(std::string_view item);

// The places in a content line: "group.NAME;PARAMETER=value:value".
struct LinePlaces {
    size_t name;       // where the name begins: behind the group and its dot, if there is one
    size_t parameters; // where the name ends and the parameters, if any, begin
    size_t colon;
};
// false when it is no content line.
bool FindPlaces(std::string_view line, LinePlaces* places);

} // namespace vcard
