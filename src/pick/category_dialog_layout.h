// Where the list and the buttons of the category dialog stand, in whatever size it has.
#pragma once

#include <windows.h>

#include <array>

constexpr size_t kCategoryButtons = 6; // add, rename, delete, hide; OK, Cancel

// In pixels.
struct CategoryDialogSizes {
    SIZE button;
    SIZE gap;
    SIZE margin;
};
struct CategoryDialogLayout {
    RECT list;
    std::array<RECT, kCategoryButtons> buttons;
};

// The list at the left takes what the buttons leave. They stand in one column at the right, OK and Cancel at
// its foot, and in more columns where the height is too small for that.
CategoryDialogLayout LayOutCategoryDialog(SIZE client, const CategoryDialogSizes& sizes);
