#include "filter/filter_text.h"

#include <bit>

#include "filter/filter_categories.h"
#include "util/month_set.h"

namespace {

constexpr const wchar_t* kNoFilter = L"None";
constexpr const wchar_t* kUnreadCategory = L"Category..."; // its name cannot be read

std::wstring CategoriesText(const FilterState& filter)
{
    const size_t count = filter.categories.Count();
    if (count > 1)
        return L"Multiple...";
    if (count == 1)
        return CategoryName(filter.categories.GetItem(0)->id).value_or(kUnreadCategory);
    return kNoFilter;
}

std::wstring MonthsText(DWORD months)
{
    const int count = CountMonths(months);
    if (count > 1)
        return L"Months...";
    return count == 1 ? MonthName(std::countr_zero(months)) : kNoFilter;
}

} // namespace

std::wstring FilterText(const FilterState& filter)
{
    if (!filter.active)
        return kNoFilter;
    if (filter.categoriesMode)
        return CategoriesText(filter);
    return filter.rangeMode ? L"Range..." : MonthsText(filter.monthMask);
}
