// The list of categories with check boxes, in which a program lets its user pick some.
#pragma once

#include <windows.h>

#include <span>

#include "mervane/records/name_cache.h"

namespace mervane {

// As DbCategories::CreateListView.
HWND CreateCategoryList(HINSTANCE instance, HWND parent, const RECT& rectangle, int id);
// As DbCategories::UpdateListView, with these categories in this order.
void FillCategoryList(HWND list, std::span<const NameCache::Entry> categories);

} // namespace mervane
