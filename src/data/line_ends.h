// A body's lines are separated by CR LF. What is pasted, or was stored by another tool, may have lone CRs and
// LFs.
#pragma once

#include <string>
#include <string_view>

// Whether the text has a CR without an LF behind it or an LF without a CR before it.
bool HasLoneLineEnd(std::wstring_view text);
// The text with CR LF for each of them.
std::wstring WithLineEnds(std::wstring_view text);
