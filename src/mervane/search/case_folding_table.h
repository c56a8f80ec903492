// The characters that simple case folding changes, as ranges in ascending order.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mervane {

struct FoldingRange {
    char32_t first;
    char32_t last;
    uint32_t step;    // 1: every character of the range folds; 2: every second one, from the first on
    int32_t distance; // from a character to the one that it folds to
};

extern const FoldingRange kFoldingRanges[];
extern const size_t kFoldingRangeCount;

} // namespace mervane
