// A topic in the rich text format that the text control reads.
#pragma once

#include <string>
#include <vector>

#include "help/page/help_document.h"

namespace help {

// In ASCII, whole. The control's text is then that of TextOf, with one difference: a cell that is wider than
// widestColumn (in twips) is followed by a line break, not by a tab. The control gives links their color
// itself.
std::string RtfOf(const std::vector<Block>& blocks, int widestColumn);

} // namespace help
