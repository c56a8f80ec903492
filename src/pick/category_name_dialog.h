// The dialog that asks for a category's name.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "pick/category_draft.h"

// A good name for the category of a row, or for a new one (row -1), without blanks around it; none when the
// user gave it up.
std::optional<std::wstring> AskForCategoryName(HWND owner, const CategoryDraft& draft, int row);
