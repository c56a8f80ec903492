#include "help/page/html_tokens.h"

#include "help/page/ascii_text.h"

namespace help {

namespace {

bool IsNameCharacter(wchar_t character)
{
    return IsLetter(character) || IsDigit(character) || character == L'-' || character == L'_' ||
           character == L':';
}

bool EndsName(wchar_t character)
{
    return IsBlank(character) || character == L'=' || character == L'>' || character == L'/';
}

} // namespace

Token HtmlTokens::Next()
{
    while (SkipUntold()) {
    }
    if (m_place >= m_page.size())
        return {};
    return IsTagAhead() ? ReadTag() : ReadText();
}

// "<" before a letter, or "</" before one; any other "<" is a character like others.
bool HtmlTokens::IsTagAhead() const
{
    if (m_page[m_place] != L'<')
        return false;
    const size_t name = m_place + (m_page.substr(m_place, 2) == L"</" ? 2 : 1);
    return name < m_page.size() && IsLetter(m_page[name]);
}

Token HtmlTokens::ReadText()
{
    const size_t start = m_place++;
    while (m_place < m_page.size()) {
        const wchar_t next = m_place + 1 < m_page.size() ? m_page[m_place + 1] : L'\0';
        if (m_page[m_place] == L'<' && (IsTagAhead() || next == L'!' || next == L'?'))
            break;
        ++m_place;
    }
    Token token;
    token.kind = Token::Kind::Text;
    token.text = DecodeEntities(m_page.substr(start, m_place - start));
    return token;
}

Token HtmlTokens::ReadTag()
{
    Token tag;
    const bool closes = m_page.substr(m_place, 2) == L"</";
    tag.kind = closes ? Token::Kind::Close : Token::Kind::Open;
    m_place += closes ? 2 : 1;
    const size_t start = m_place;
    while (m_place < m_page.size() && IsNameCharacter(m_page[m_place]))
        ++m_place;
    tag.text = InSmallLetters(m_page.substr(start, m_place - start));
    ReadAttributes(tag);
    if (!closes && (tag.text == L"script" || tag.text == L"style"))
        SkipContentOf(tag.text);
    return tag;
}

// A tag that the page never closes ends where the next one begins.
void HtmlTokens::ReadAttributes(Token& tag)
{
    while (true) {
        while (m_place < m_page.size() && (IsBlank(m_page[m_place]) || m_page[m_place] == L'/'))
            ++m_place;
        if (m_place >= m_page.size() || m_page[m_place] == L'<')
            return;
        if (m_page[m_place] == L'>') {
            ++m_place;
            return;
        }
        const std::wstring name = ReadName();
        tag.attributes.emplace(name, ReadValue());
    }
}

std::wstring HtmlTokens::ReadName()
{
    const size_t start = m_place++;
    while (m_place < m_page.size() && !EndsName(m_page[m_place]) && m_page[m_place] != L'<')
        ++m_place;
    return InSmallLetters(m_page.substr(start, m_place - start));
}

std::wstring HtmlTokens::ReadValue()
{
    SkipBlanks();
    if (m_place >= m_page.size() || m_page[m_place] != L'=')
        return {};
    ++m_place;
    SkipBlanks();
    if (m_place >= m_page.size())
        return {};
    const wchar_t quote = m_page[m_place];
    const bool isQuoted = quote == L'"' || quote == L'\'';
    const size_t start = m_place + (isQuoted ? 1 : 0);
    size_t end = isQuoted ? m_page.find(quote, start) : m_page.find_first_of(L" \t\r\n\f>", start);
    if (end == std::wstring_view::npos) // a quote that is never closed
        end = std::min(m_page.find(L'>', start), m_page.size());
    m_place = end + (isQuoted && end < m_page.size() && m_page[end] == quote ? 1 : 0);
    return DecodeEntities(m_page.substr(start, end - start));
}

void HtmlTokens::SkipBlanks()
{
    while (m_place < m_page.size() && IsBlank(m_page[m_place]))
        ++m_place;
}

bool HtmlTokens::SkipUntold()
{
    const std::wstring_view rest = m_page.substr(std::min(m_place, m_page.size()));
    if (rest.substr(0, 4) == L"<!--")
        SkipTo(L"-->");
    else if (rest.substr(0, 2) == L"<!" || rest.substr(0, 2) == L"<?")
        SkipTo(L">");
    else
        return false;
    return true;
}

void HtmlTokens::SkipTo(std::wstring_view end)
{
    const size_t found = m_page.find(end, m_place);
    m_place = found == std::wstring_view::npos ? m_page.size() : found + end.size();
}

void HtmlTokens::SkipContentOf(std::wstring_view name)
{
    for (size_t close = m_place; (close = m_page.find(L"</", close)) != std::wstring_view::npos; ++close)
        if (InSmallLetters(m_page.substr(close + 2, name.size())) == name) {
            m_place = close;
            return;
        }
    m_place = m_page.size();
}

} // namespace help
