#include "mervane/search/case_folding.h"

#include <algorithm>

#include "mervane/search/case_folding_table.h"

namespace mervane {

namespace {

std::span<const FoldingRange> Ranges()
{
    return {kFoldingRanges, kFoldingRangeCount};
}

char32_t Moved(char32_t code, int32_t distance)
{
    return static_cast<char32_t>(static_cast<int32_t>(code) + distance);
}

bool Holds(const FoldingRange& range, char32_t code)
{
    return code >= range.first && code <= range.last && (code - range.first) % range.step == 0;
}

} // namespace

char32_t FoldCase(char32_t code)
{
    const auto ranges = Ranges();
    const auto behind =
        std::upper_bound(ranges.begin(), ranges.end(), code,
                         [](char32_t wanted, const FoldingRange& range) { return wanted < range.first; });
    if (behind == ranges.begin())
        return code;
    const FoldingRange& range = *(behind - 1);
    return Holds(range, code) ? Moved(code, range.distance) : code;
}

CaseForms CaseForms::Only(char32_t code)
{
    CaseForms forms;
    forms.Add(code);
    return forms;
}

CaseForms CaseForms::Of(char32_t code)
{
    const char32_t folded = FoldCase(code);
    CaseForms forms = Only(folded);
    for (const FoldingRange& range : Ranges())
        if (const char32_t origin = Moved(folded, -range.distance); Holds(range, origin))
            forms.Add(origin);
    return forms;
}

} // namespace mervane
