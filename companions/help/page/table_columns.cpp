#include "help/page/table_columns.h"

#include <algorithm>
#include <cstddef>

namespace help {

namespace {

// In twips. A letter is taken to be somewhat wider than most are: fonts differ, and nothing is measured here.
constexpr int kLetter = 100;
constexpr int kBoldLetter = 115;
constexpr int kCodeLetter = 125;
constexpr int kGap = 200;
constexpr int kNarrowest = 1200;
constexpr int kWidest = 2900;
constexpr int kStep = 580; // of the widest, so that few widths of a text lay it out anew

int WidthOf(const Block& row)
{
    int width = kGap;
    for (const Run& run : row.cells.front()) {
        const int letter = run.isCode ? kCodeLetter : run.isBold || row.isHeader ? kBoldLetter : kLetter;
        width += letter * static_cast<int>(std::min<size_t>(run.text.size(), kWidest));
    }
    return width;
}

bool IsRow(const Block& block)
{
    return block.kind == BlockKind::TableRow;
}

// Behind the last row of the table that begins at a row.
size_t EndOfTable(const std::vector<Block>& blocks, size_t first)
{
    size_t end = first + 1;
    while (end < blocks.size() && IsRow(blocks[end]) && !blocks[end].isHeader)
        ++end;
    return end;
}

} // namespace

int WidestColumn(int textWidth)
{
    return std::clamp(textWidth / 2 / kStep * kStep, kStep, kWidest);
}

std::vector<int> FirstColumnsOf(const std::vector<Block>& blocks, int widest)
{
    std::vector<int> columns(blocks.size(), 0);
    for (size_t first = 0; first < blocks.size();) {
        if (!IsRow(blocks[first])) {
            ++first;
            continue;
        }
        const size_t end = EndOfTable(blocks, first);
        int column = std::min(kNarrowest, widest);
        for (size_t row = first; row < end; ++row)
            if (const int width = WidthOf(blocks[row]); width <= widest)
                column = std::max(column, width);
        std::fill(columns.begin() + static_cast<std::ptrdiff_t>(first),
                  columns.begin() + static_cast<std::ptrdiff_t>(end), column);
        first = end;
    }
    return columns;
}

bool BreaksBehindFirst(const Block& row, int firstColumn)
{
    return row.cells.size() == 2 && WidthOf(row) > firstColumn;
}

} // namespace help
