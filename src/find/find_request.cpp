#include "find/find_request.h"

std::wstring SearchTextOf(const std::wstring& typed)
{
    std::wstring text = typed.substr(0, kSearchTextLength);
    if (typed.size() > text.size() && IS_HIGH_SURROGATE(text.back()))
        text.pop_back();
    if (CompareStringW(LOCALE_USER_DEFAULT, 0, text.c_str(), -1, kSearchPlaceholder, -1) == CSTR_EQUAL)
        text.clear();
    return text;
}
