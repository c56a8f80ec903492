// Where the second cells of a table's rows stand. Rows below each other are one table, up to the next row of
// titles; the widest first cell that is not too wide makes the column.
#pragma once

#include <vector>

#include "help/page/help_document.h"

namespace help {

constexpr int kTwipsPerInch = 1440;
constexpr int kOtherCells = 1900; // the width of each cell between the first and the last, in twips

// Of what there is for a text, in twips: what its tables' first cells may take.
int WidestColumn(int textWidth);

// For each block the width of its first cell's column in twips, at most the widest; 0 for what is no row.
std::vector<int> FirstColumnsOf(const std::vector<Block>& blocks, int widest);

// Whether the first of two cells does not fit its column, so that the second one begins a line of its own.
bool BreaksBehindFirst(const Block& row, int firstColumn);

} // namespace help
