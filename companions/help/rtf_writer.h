// A topic in the rich text format that the text control reads.
#pragma once

#include <string>
#include <vector>

#include "help/help_document.h"

namespace help {

// In ASCII, whole. The control's text is then that of TextOf. The control gives links their color itself.
std::string RtfOf(const std::vector<Block>& blocks);

} // namespace help
