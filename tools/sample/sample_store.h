// Fills a store with sample data: the same bytes in every property for the same plan.
#pragma once

#include <windows.h>

#include <cstdint>

#include "mervane/db_categories.h"

namespace sample {

// The day that samples end on unless told otherwise.
constexpr SYSTEMTIME kReferenceDay{2025, 6, 1, 30, 0, 0, 0, 0};

struct SamplePlan {
    uint32_t count = 0;
    bool bulk = false; // otherwise realistic
    uint64_t seed = 1;
    SYSTEMTIME today = kReferenceDay; // only year, month and day count
};

// How many entries one transaction writes: a million in one would need their whole size once more in the log.
constexpr uint32_t kEntriesPerCommit = 5'000;

// Writes categories, contacts and entries to the store that MERVANE_STORE names, which is made when it is
// missing. False when something could not be written; what was written before that stays.
[[nodiscard]] bool FillStore(const SamplePlan& plan);

// Sets a category's use count, also beyond what its 16-bit property can say.
[[nodiscard]] bool SetUses(DbCategories& categories, CEOID category, uint32_t uses);

} // namespace sample
