#include "formats/vcard/line_text.h"

namespace vcard {

namespace {

char Lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

bool IsNameCharacter(char character)
{
    const char lower = Lower(character);
    return (lower >= 'a' && lower <= 'z') || (character >= '0' && character <= '9') || character == '-' ||
           character == '_';
}

// The first such character that does not stand between quotes; npos for none.
size_t FindUnquoted(std::string_view text, char wanted, size_t from = 0)
{
    bool quoted = false;
    for (size_t i = from; i < text.size(); ++i) {
        if (text[i] == '"')
            quoted = !quoted;
        else if (text[i] == wanted && !quoted)
            return i;
    }
    return std::string_view::npos;
}

// Version 2.1 knows no quotes, and a quote that is never closed is a character like any other.
size_t FindColon(std::string_view line, size_t from)
{
    if (line[from] == ':')
        return from;
    const size_t colon = FindUnquoted(line, ':', from);
    return colon == std::string_view::npos ? line.find(':', from) : colon;
}

} // namespace

bool EqualsNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && StartsWithNoCase(a, b);
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix)
{
    if (text.size() < prefix.size())
        return false;
    for (size_t i = 0; i < prefix.size(); ++i)
        if (Lower(text[i]) != Lower(prefix[i]))
            return false;
    return true;
}

void AppendUnescaped(std::string& out, std::string_view value)
{
    for (size_t escape; (escape = value.find('\\')) != std::string_view::npos && escape + 1 < value.size();) {
        out.append(value.substr(0, escape));
        const char character = value[escape + 1];
        if (character == 'n' || character == 'N')
            out += '\n';
        else if (std::string_view(",;:\\").find(character) != std::string_view::npos)
            out += character;
        else
            out.append({'\\', character});
        value.remove_prefix(escape + 2);
    }
    out.append(value);
}

void AppendEscaped(std::string& out, std::string_view text)
{
    size_t plain = 0; // up to here it is written
    for (size_t i = 0; i < text.size(); ++i) {
        if (!NeedsEscape(text[i]))
            continue;
        out.append(text, plain, i - plain);
        out += '\\';
        out += text[i] == '\n' ? 'n' : text[i];
        plain = i + 1;
    }
    out.append(text, plain);
}

size_t ComponentStart(std::string_view value, size_t index)
{
    size_t start = 0;
    for (size_t i = 0; index > 0; ++i) {
        if (i >= value.size())
            return std::string_view::npos;
        if (value[i] == '\\')
            ++i;
        else if (value[i] == ';' && (start = i + 1, --index == 0))
            break;
    }
    return start;
}

std::string_view Component(std::string_view value, size_t index)
{
    const size_t start = ComponentStart(value, index);
    if (start == std::string_view::npos)
        return {};
    value.remove_prefix(start);
    const size_t next = ComponentStart(value, 1);
    return next == std::string_view::npos ? value : value.substr(0, next - 1);
}

bool Parameters::Next(Parameter* parameter)
{
    if (m_rest.empty())
        return false;
    m_rest.remove_prefix(1); // the semicolon
    const size_t end = FindUnquoted(m_rest, ';');
    const std::string_view whole = m_rest.substr(0, end);
    m_rest.remove_prefix(whole.size());
    const size_t equals = FindUnquoted(whole, '=');
    if (equals == std::string_view::npos)
        *parameter = {{}, whole};
    else
        *parameter = {whole.substr(0, equals), whole.substr(equals + 1)};
    return true;
}

std::string_view FindParameter(std::string_view parameters, std::string_view name)
{
    Parameter parameter;
    for (Parameters all(parameters); all.Next(&parameter);)
        if (EqualsNoCase(parameter.name, name))
            return parameter.value;
    return {};
}

std::string_view TakeListItem(std::string_view* list)
{
    const size_t end = FindUnquoted(*list, ',');
    const std::string_view item = list->substr(0, end);
    list->remove_prefix(end == std::string_view::npos ? list->size() : end + 1);
    return item;
}

std::string_view WithoutQuotes(std::string_view text)
{
    const bool isQuoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

std::string ParameterText(std::string_view item)
{
    std::string text;
    for (size_t i = 0; i < item.size(); ++i) {
        if (item[i] == '"')
            continue;
        const char next = item[i] == '^' && i + 1 < item.size() ? item[i + 1] : '\0';
        const bool isEscape = next == 'n' || next == '^' || next == '\'';
        text += !isEscape ? item[i] : next == 'n' ? '\n' : next == '\'' ? '"' : '^';
        i += isEscape ? 1 : 0;
    }
    return text;
}

bool FindPlaces(std::string_view line, LinePlaces* places)
{
    size_t start = 0, end = 0;
    while (end < line.size() && IsNameCharacter(line[end]))
        ++end;
    if (end > 0 && end < line.size() && line[end] == '.') {
        start = ++end;
        while (end < line.size() && IsNameCharacter(line[end]))
            ++end;
    }
    if (end == start || end == line.size() || (line[end] != ':' && line[end] != ';'))
        return false;
    const size_t colon = FindColon(line, end);
    if (colon == std::string_view::npos)
        return false;
    *places = {start, end, colon};
    return true;
}

} // namespace vcard
