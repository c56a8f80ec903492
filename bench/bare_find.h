// What a search by text cannot do without, done bare: reading the column with one statement, folding each
// text and comparing as it steps. It knows nothing of how the product searches.
#pragma once

#include <string>
#include <vector>

#include "bare_store.h"
#include "mervane/values/ce_types.h"

namespace bench {

// The records whose text in the column holds the given one, whatever its case. ASCII letters are folded byte
// by byte.
std::vector<CEOID> BareFindAscii(BareStore& store, const char* column, const std::string& text);
// The same for any text: characters are taken from their UTF-8 and folded with a table of lower cases, which
// is right for the letters of one alphabet.
std::vector<CEOID> BareFindAny(BareStore& store, const char* column, const std::wstring& text);

} // namespace bench
