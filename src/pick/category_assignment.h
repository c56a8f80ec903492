// What the user's checks do to the editor's category stack. The flags tell the save which use counts change.
#pragma once

#include <vector>

#include "mervane/db_categories.h"

// Checks a category. One that the stack does not have is added as newly assigned; one that was released since
// the editor opened is assigned again, as if nothing had happened.
void AssignCategory(ZStack* stack, CEOID id);
// Unchecks a category. One that was newly assigned leaves the stack without a trace; any other one stays in
// it, marked to be released by the save. Nothing for one that is not there.
void ReleaseCategory(ZStack* stack, CEOID id);

// For an entry beside the one that the stack was loaded from: its categories are all newly assigned, and none
// was ever released.
void CountAllAsAdded(ZStack* stack);

std::vector<CEOID> AssignedCategories(const ZStack& stack);

// After the list of categories was edited: drops what no longer exists or is hidden, whatever its flags. What
// the store cannot tell of, as when it is not open, stays.
void DropUnlistedCategories(ZStack* stack, DbCategories* store);
