// The flag word of an item of the editor's category stack.
#pragma once

#include <windows.h>

constexpr WORD kCategoryKnown = 0x0001;    // on every item that the editor creates or loads
constexpr WORD kCategoryReleased = 0x0010; // unassigned since the editor opened: use count down on save
constexpr WORD kCategoryAssigned = 0x0100;
constexpr WORD kCategoryAdded = 0x1000; // assigned since the editor opened: use count up on save
constexpr WORD kCategoryLoaded = kCategoryKnown | kCategoryAssigned;
