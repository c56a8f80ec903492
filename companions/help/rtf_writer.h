// A topic in the rich text format that the text control reads.
#pragma once

#include <string>
#include <vector>

#include "help/help_document.h"

namespace help {

// In ASCII, whole. The control's text is then that of TextOf. color is the one of the links.
std::string RtfOf(const std::vector<Block>& blocks, unsigned long linkColor);

} // namespace help
