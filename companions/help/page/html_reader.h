// Reads a page of the help: the few tags that a help needs (headings, p, br, hr, pre, ul, ol, li, dl, tables,
// b, strong, i, em, kbd, code, a, title). All others are passed over, their text stays. Whatever the page
// holds, there is a document.
#pragma once

#include <string_view>

#include "help/page/help_document.h"

namespace help {

Document ReadHtml(std::wstring_view page);

} // namespace help
