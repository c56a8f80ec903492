#include "help/page/document_builder.h"

#include <algorithm>

#include "help/page/ascii_text.h"

namespace help {

namespace {

constexpr size_t kMaxCells = 16; // of a row; what follows goes into the last
constexpr size_t kLongestTarget = 2048;

void TrimEnd(std::vector<Run>& runs)
{
    while (!runs.empty()) {
        std::wstring& text = runs.back().text;
        while (!text.empty() && (text.back() == L' ' || text.back() == L'\n' || text.back() == L'\v'))
            text.pop_back();
        if (!text.empty())
            return;
        runs.pop_back();
    }
}

bool LooksAlike(const Run& one, const Run& other)
{
    return one.isBold == other.isBold && one.isItalic == other.isItalic && one.isCode == other.isCode &&
           one.target == other.target;
}

// The text with every row of blanks made one, and none at the beginning where a blank was before.
std::wstring WithSingleBlanks(std::wstring_view text, bool& endsInBlank)
{
    std::wstring single;
    for (const wchar_t character : text) {
        const bool isBlank = IsBlank(character);
        if (!isBlank || !endsInBlank)
            single += isBlank ? L' ' : character;
        endsInBlank = isBlank;
    }
    return single;
}

} // namespace

void DocumentBuilder::AddTitle(std::wstring_view text)
{
    bool endsInBlank = m_document.title.empty() || m_document.title.back() == L' ';
    m_document.title += WithSingleBlanks(text, endsInBlank);
}

void DocumentBuilder::SetTarget(std::wstring target)
{
    m_target = target.size() <= kLongestTarget ? std::move(target) : std::wstring();
}

void DocumentBuilder::AddText(std::wstring_view text)
{
    if (m_block.kind != BlockKind::Preformatted)
        return AddRun(WithSingleBlanks(text, m_endsInBlank));
    std::wstring lines(text);
    std::erase(lines, L'\r');
    std::replace(lines.begin(), lines.end(), L'\n', L'\v');
    if (!HasText() && !lines.empty() && lines.front() == L'\v')
        lines.erase(0, 1);
    AddRun(std::move(lines));
}

void DocumentBuilder::AddRun(std::wstring text)
{
    if (text.empty())
        return;
    Run run{std::move(text), m_bold > 0, m_italic > 0, m_code > 0, m_target};
    std::vector<Run>& runs = m_block.cells.back();
    if (!runs.empty() && LooksAlike(runs.back(), run))
        runs.back().text += run.text;
    else
        runs.push_back(std::move(run));
}

void DocumentBuilder::BreakLine()
{
    if (!HasText())
        return;
    AddRun(L"\v");
    m_endsInBlank = true;
}

bool DocumentBuilder::HasText() const
{
    return std::any_of(m_block.cells.begin(), m_block.cells.end(),
                       [](const std::vector<Run>& runs) { return !runs.empty(); });
}

int DocumentBuilder::ListLevel() const
{
    return static_cast<int>(m_lists.size());
}

void DocumentBuilder::StartBlock(BlockKind kind, int level)
{
    EndBlock();
    m_block.kind = kind;
    m_block.level = level;
    m_hasBlock = true;
}

void DocumentBuilder::StartParagraph()
{
    const bool isWithin = m_hasBlock && (m_block.kind == BlockKind::TableRow ||
                                         (m_block.kind == BlockKind::ListItem && !HasText()));
    if (!isWithin)
        StartBlock(BlockKind::Paragraph);
    else if (HasText())
        AddText(L" ");
}

// An empty block is none; what leads to it leads to the next one. A look that was never ended ends here.
void DocumentBuilder::EndBlock()
{
    for (std::vector<Run>& runs : m_block.cells)
        TrimEnd(runs);
    Block next;
    if (HasText())
        m_document.blocks.push_back(std::move(m_block));
    else
        next.anchors = std::move(m_block.anchors);
    m_block = std::move(next);
    m_hasBlock = m_hasCell = false;
    m_endsInBlank = true;
    m_bold = m_italic = m_code = 0;
    m_target.clear();
}

void DocumentBuilder::EndParagraph()
{
    if (!m_hasBlock || m_block.kind != BlockKind::TableRow)
        EndBlock();
}

void DocumentBuilder::OpenList(bool isNumbered)
{
    EndBlock();
    if (m_lists.size() < static_cast<size_t>(kMaxListDepth))
        m_lists.push_back({isNumbered, 0});
    else
        ++m_deeperLists;
}

void DocumentBuilder::CloseList()
{
    EndBlock();
    if (m_deeperLists > 0)
        --m_deeperLists;
    else if (!m_lists.empty())
        m_lists.pop_back();
}

void DocumentBuilder::StartItem()
{
    StartBlock(BlockKind::ListItem, std::max(1, ListLevel()));
    const bool isNumbered = !m_lists.empty() && m_lists.back().isNumbered;
    m_block.marker = isNumbered ? std::to_wstring(++m_lists.back().count) + L"." : L"\u2022";
}

void DocumentBuilder::StartCell(bool isTitle)
{
    if (!m_hasBlock || m_block.kind != BlockKind::TableRow)
        StartBlock(BlockKind::TableRow);
    if (m_hasCell) {
        TrimEnd(m_block.cells.back());
        if (m_block.cells.size() < kMaxCells)
            m_block.cells.emplace_back();
    }
    m_hasCell = true;
    m_block.isHeader = m_block.isHeader || isTitle;
    m_endsInBlank = true;
}

void DocumentBuilder::AddAnchor(const std::wstring& anchor)
{
    if (!anchor.empty())
        m_block.anchors.push_back(anchor);
}

Document DocumentBuilder::Finish()
{
    EndBlock();
    if (!m_block.anchors.empty() && !m_document.blocks.empty()) {
        std::vector<std::wstring>& last = m_document.blocks.back().anchors;
        last.insert(last.end(), m_block.anchors.begin(), m_block.anchors.end());
    }
    while (!m_document.title.empty() && m_document.title.back() == L' ')
        m_document.title.pop_back();
    Document finished = std::move(m_document);
    *this = DocumentBuilder();
    return finished;
}

} // namespace help
