// The line that names an entry's categories.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "mervane/db_categories.h"

// Stands among names, for those that the store could not tell.
constexpr const wchar_t* kUnreadNames = L"(not all can be read)";

// The names joined with ", ". A text that grows longer than room characters with a later name is cut to room,
// its last three characters "..."; without a name "<None>".
std::wstring CategoriesLineText(const std::vector<std::wstring>& names, int room);

// Sorts the stack by name and shows the assigned categories in the static control, kUnreadNames behind them
// where there are more.
void ShowCategoriesLine(HWND line, ZStack* categories, DbCategories* store);
