// The list's columns; a width that somebody has dragged is kept in the settings.
#pragma once

#include <windows.h>

#include "settings/registry_store.h"

namespace addrbook {

// One for each Column, in their order, for a list that will be as wide as its parent. The first time they
// take all of that width. A stored width that would hide the column or fill every screen is not taken.
void InsertColumns(HWND list, const RegistryStore& settings);
void SaveColumnWidths(HWND list, RegistryStore& settings);

} // namespace addrbook
