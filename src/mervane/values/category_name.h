// What makes a category's name a good one.
#pragma once

#include <string_view>

namespace mervane {

// Two categories may not have such names: they differ in case only, if at all.
bool IsSameCategoryName(std::wstring_view a, std::wstring_view b);

// A name as it was typed, without the blanks around it.
std::wstring_view TrimCategoryName(std::wstring_view typed);

} // namespace mervane
