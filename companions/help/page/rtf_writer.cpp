#include "help/page/rtf_writer.h"

#include "help/page/table_columns.h"
#include "help/page/topic_text.h"

namespace help {

namespace {

// Lengths in twips, sizes in half points.
constexpr int kTextSize = 20;
constexpr int kHeadingSizes[] = {32, 26, 22, 20, 20, 20};
constexpr int kEdge = 120;        // around the text
constexpr int kIndent = 360;      // of one level of a list
constexpr int kMarkerWidth = 260; // between an item's marker and its text

std::string Word(const char* name, int value)
{
    return "\\" + std::string(name) + std::to_string(value);
}

std::string TabStops(const Block& block, int firstColumn)
{
    std::string stops;
    for (size_t cell = 1; cell < block.cells.size(); ++cell)
        stops += Word("tx", kEdge + firstColumn + kOtherCells * static_cast<int>(cell - 1));
    return stops;
}

// The last cell goes on below itself; a row of titles stands off from what is above.
std::string RowFormat(const Block& block, int firstColumn)
{
    const std::string space = block.isHeader ? "\\sb120\\sa40\\b" : "\\sa40";
    if (block.cells.size() < 2)
        return space + Word("li", kEdge);
    const int hanging = firstColumn + kOtherCells * static_cast<int>(block.cells.size() - 2);
    return space + Word("li", kEdge + hanging) + Word("fi", -hanging) + TabStops(block, firstColumn);
}

std::string ItemFormat(const Block& block)
{
    const int left = kEdge + kIndent * (block.level - 1) + kMarkerWidth;
    return "\\sa60" + Word("li", left) + Word("fi", -kMarkerWidth) + Word("tx", left);
}

std::string FormatOf(const Block& block, int firstColumn)
{
    switch (block.kind) {
    case BlockKind::Heading:
        return "\\sb160\\sa100\\b" + Word("li", kEdge) + Word("fs", kHeadingSizes[block.level - 1]);
    case BlockKind::ListItem: return ItemFormat(block);
    case BlockKind::TableRow: return RowFormat(block, firstColumn);
    case BlockKind::Preformatted: return "\\sb60\\sa100\\f1" + Word("li", kEdge);
    case BlockKind::Paragraph: return "\\sb60\\sa100" + Word("li", kEdge);
    }
    return {};
}

void AppendCharacter(std::string& rtf, wchar_t character)
{
    switch (character) {
    case L'\t': rtf += "\\tab "; return;
    case L'\v': rtf += "\\line "; return;
    case L'\\':
    case L'{':
    case L'}': rtf += '\\'; break;
    default: break;
    }
    if (character >= L' ' && character < 0x7F)
        rtf += static_cast<char>(character);
    else
        rtf += Word("u", static_cast<short>(character)) + "?";
}

std::string TextInRtf(const std::wstring& text)
{
    std::string rtf;
    for (const wchar_t character : text)
        AppendCharacter(rtf, character);
    return rtf;
}

// A control word ends with a blank of its own; a blank behind a brace would be text.
std::string RunInRtf(const Run& run)
{
    std::string words;
    if (run.isBold)
        words += "\\b";
    if (run.isItalic)
        words += "\\i";
    if (run.isCode)
        words += "\\f1";
    if (!run.target.empty())
        words += "\\ul";
    return "{" + (words.empty() ? words : words + " ") + TextInRtf(run.text) + "}";
}

std::string BlockInRtf(const Block& block, int firstColumn)
{
    std::string rtf =
        "{\\pard\\plain\\f0" + Word("fs", kTextSize) + Word("ri", kEdge) + FormatOf(block, firstColumn) + " ";
    rtf += TextInRtf(LeadOf(block));
    for (size_t cell = 0; cell < block.cells.size(); ++cell) {
        if (cell > 0)
            rtf += BreaksBehindFirst(block, firstColumn) ? "\\line " : "\\tab ";
        for (const Run& run : block.cells[cell])
            rtf += RunInRtf(run);
    }
    return rtf;
}

} // namespace

// The last paragraph ends as all do: the control takes a paragraph's format when it ends, and leaves out the
// empty paragraph behind the last one.
std::string RtfOf(const std::vector<Block>& blocks, int widestColumn)
{
    std::string rtf = "{\\rtf1\\ansi\\ansicpg1252\\deff0"
                      "{\\fonttbl{\\f0\\fswiss Tahoma;}{\\f1\\fmodern Courier New;}}\n";
    const std::vector<int> firstColumns = FirstColumnsOf(blocks, widestColumn);
    for (size_t block = 0; block < blocks.size(); ++block)
        rtf += BlockInRtf(blocks[block], firstColumns[block]) + "\\par}\n";
    return rtf + "}";
}

} // namespace help
