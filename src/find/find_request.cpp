#include "find/find_request.h"

#include "util/text_cut.h"

#include "util/compare_text.h"

std::wstring SearchTextOf(const std::wstring& typed)
{
    std::wstring text(CutText(typed, kSearchTextLength));
    if (IsSameForUser(text, kSearchPlaceholder, Case::Matters))
        text.clear();
    return text;
}
