#include "find/find_request.h"

#include "util/compare_text.h"

std::wstring SearchTextOf(const std::wstring& typed)
{
    std::wstring text = typed.substr(0, kSearchTextLength);
    if (typed.size() > text.size() && IS_HIGH_SURROGATE(text.back()))
        text.pop_back();
    if (IsSameForUser(text, kSearchPlaceholder, Case::Matters))
        text.clear();
    return text;
}
