#include "mervane/values/category_name.h"

#include "util/compare_text.h"

namespace mervane {

bool IsSameCategoryName(std::wstring_view a, std::wstring_view b)
{
    return IsSameName(a, b);
}

std::wstring_view TrimCategoryName(std::wstring_view typed)
{
    constexpr const wchar_t* kBlanks = L" \t\r\n\u00A0\u3000";
    const size_t first = typed.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return typed.substr(first, typed.find_last_not_of(kBlanks) - first + 1);
}

} // namespace mervane
