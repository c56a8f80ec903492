// Cuts the text of a page into tags and what lies between them. Nothing that a page can hold is an error:
// what is no tag is text.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace help {

struct Token {
    enum class Kind { Text, Open, Close, End };
    Kind kind = Kind::End;
    std::wstring text; // of a text, its entities replaced; of a tag, its name in small letters
    std::map<std::wstring, std::wstring> attributes; // names in small letters
};

class HtmlTokens {
  public:
    // The page must outlive the object.
    explicit HtmlTokens(std::wstring_view page) : m_page(page) {}

    // The next one; of kind End after the last, again and again. Comments, declarations and what is inside
    // script and style are passed over.
    Token Next();

  private:
    bool IsTagAhead() const;
    Token ReadText();
    Token ReadTag();
    void ReadAttributes(Token& tag);
    std::wstring ReadName();
    std::wstring ReadValue();
    void SkipBlanks();
    bool SkipUntold();
    void SkipTo(std::wstring_view end);
    void SkipContentOf(std::wstring_view name);

    std::wstring_view m_page;
    size_t m_place = 0;
};

// The text with its entities ("&amp;", "&#228;", "&#xE4;") replaced; one that is not known stays as written.
std::wstring DecodeEntities(std::wstring_view text);

} // namespace help
