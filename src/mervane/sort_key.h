// The order of texts: the user's locale without regard to case, as bytes that compare with memcmp.
#pragma once

#include <string>
#include <string_view>

namespace mervane {

// Empty for the empty text.
std::string SortKey(std::wstring_view text);

} // namespace mervane
