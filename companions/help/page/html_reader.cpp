#include "help/page/html_reader.h"

#include "help/page/ascii_text.h"
#include "help/page/document_builder.h"
#include "help/page/html_tokens.h"

namespace help {

namespace {

std::wstring AttributeOf(const Token& tag, const wchar_t* name)
{
    const auto found = tag.attributes.find(name);
    return found == tag.attributes.end() ? std::wstring() : found->second;
}

bool IsHeading(const std::wstring& name)
{
    return name.size() == 2 && name[0] == L'h' && name[1] >= L'1' && name[1] <= L'6';
}

// The change of a run's look that a tag stands for: 1 where it opens, -1 where it closes.
bool ChangeLook(DocumentBuilder& builder, const std::wstring& name, int change)
{
    if (name == L"b" || name == L"strong")
        builder.AddBold(change);
    else if (name == L"i" || name == L"em")
        builder.AddItalic(change);
    else if (name == L"kbd" || name == L"code" || name == L"tt" || name == L"samp")
        builder.AddCode(change);
    else
        return false;
    return true;
}

void OpenTable(DocumentBuilder& builder, const std::wstring& name)
{
    if (name == L"tr")
        builder.StartBlock(BlockKind::TableRow);
    else if (name == L"td" || name == L"th")
        builder.StartCell(name == L"th");
    else
        builder.EndBlock();
}

bool IsOfTable(const std::wstring& name)
{
    return name == L"table" || name == L"tr" || name == L"td" || name == L"th" || name == L"thead" ||
           name == L"tbody" || name == L"tfoot" || name == L"caption";
}

bool IsPlainBlock(const std::wstring& name)
{
    return name == L"p" || name == L"div" || name == L"dt" || name == L"dd" || name == L"dl" ||
           name == L"blockquote" || name == L"hr" || name == L"body" || name == L"section";
}

void Open(DocumentBuilder& builder, const Token& tag)
{
    const std::wstring& name = tag.text;
    if (IsHeading(name))
        builder.StartBlock(BlockKind::Heading, name[1] - L'0');
    else if (name == L"pre")
        builder.StartBlock(BlockKind::Preformatted);
    else if (name == L"ul" || name == L"ol")
        builder.OpenList(name == L"ol");
    else if (name == L"li")
        builder.StartItem();
    else if (name == L"br")
        builder.BreakLine();
    else if (IsOfTable(name))
        OpenTable(builder, name);
    else if (IsPlainBlock(name))
        builder.StartParagraph();
    else
        ChangeLook(builder, name, 1);
    builder.AddAnchor(AttributeOf(tag, L"id"));
    if (name == L"a") {
        builder.AddAnchor(AttributeOf(tag, L"name"));
        builder.SetTarget(AttributeOf(tag, L"href"));
    }
}

void Close(DocumentBuilder& builder, const std::wstring& name)
{
    if (name == L"a")
        builder.SetTarget({});
    else if (name == L"ul" || name == L"ol")
        builder.CloseList();
    else if (name == L"td" || name == L"th")
        builder.EndCell();
    else if (IsPlainBlock(name))
        builder.EndParagraph();
    else if (IsHeading(name) || name == L"pre" || name == L"li" || IsOfTable(name))
        builder.EndBlock();
    else
        ChangeLook(builder, name, -1);
}

} // namespace

Document ReadHtml(std::wstring_view page)
{
    HtmlTokens tokens(page);
    DocumentBuilder builder;
    bool isTitle = false;
    for (Token token = tokens.Next(); token.kind != Token::Kind::End; token = tokens.Next()) {
        if (token.text == L"title" && token.kind != Token::Kind::Text)
            isTitle = token.kind == Token::Kind::Open;
        else if (token.kind == Token::Kind::Open) {
            isTitle = false;
            Open(builder, token);
        } else if (token.kind == Token::Kind::Close)
            Close(builder, token.text);
        else if (isTitle)
            builder.AddTitle(token.text);
        else
            builder.AddText(token.text);
    }
    return builder.Finish();
}

} // namespace help
