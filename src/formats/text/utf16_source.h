// Files in UTF-16, as Windows' programs write what they call Unicode.
#pragma once

#include "formats/text/lines.h"

namespace text {

// The same bytes, but UTF-8 where the source begins with a mark of UTF-16, which is left out. An unpaired
// surrogate or half a unit at the end becomes U+FFFD.
ByteSource WithUtf16Decoded(ByteSource source);

} // namespace text
