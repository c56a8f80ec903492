// The filter's categories and the device's list of them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "data/filter_state.h"

struct OfferedCategory {
    CEOID id;
    std::wstring name;
};

// The first categories, in the order of their names, that have a name and that entries use; at most
// kMostOffered. None when the categories cannot be opened. hasAll, which may be null, is set to false where
// some of an open store could not be read.
constexpr size_t kMostOffered = 8;
std::vector<OfferedCategory> OfferedCategories(bool* hasAll = nullptr);

// Makes the filter this one category.
void FilterOnCategory(CEOID id, FilterState* filter);

// Takes categories that do not exist any more out of the filter; true when there was one. Entries that still
// refer to one are filed under nothing that a person could see. One that cannot be looked for stays. A filter
// on categories without any is no filter: it goes out of force.
bool BringFilterUpToDate(FilterState* filter);

// Empty when there is none; nothing when it cannot be read.
std::optional<std::wstring> CategoryName(CEOID id);
