// A topic in the rich text format that the text control reads.
#pragma once

#include <string>
#include <vector>

#include "help/page/help_document.h"

namespace help {

// In ASCII, whole. The control's text is then that of TextOf, but for line breaks in the place of tabs behind
// cells that are wider than their column, which is at most so wide, in twips. The control gives links their
// color itself.
std::string RtfOf(const std::vector<Block>& blocks, int widestColumn);

} // namespace help
