#include "addrbook/transfer/count_text.h"

#include <windows.h>

namespace addrbook {

namespace {

std::wstring LocaleText(LCTYPE type, const wchar_t* otherwise)
{
    wchar_t text[16];
    return GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text, 16) ? text : otherwise;
}

} // namespace

std::wstring CountText(size_t count, const wchar_t* one, const wchar_t* many)
{
    std::wstring digits = std::to_wstring(count);
    const std::wstring separator = LocaleText(LOCALE_STHOUSAND, L",");
    for (size_t place = digits.size(); place > 3;)
        digits.insert(place -= 3, separator);
    return digits + L" " + (count == 1 ? one : many);
}

} // namespace addrbook
