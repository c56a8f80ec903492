// Texts that a card may bring, cut to what a window has room for.
#pragma once

#include <windows.h>

#include <string>

namespace addrbook {

constexpr size_t kLongestName = 80;

inline std::wstring Shortened(const std::wstring& text, size_t longest)
{
    if (text.size() <= longest)
        return text;
    return text.substr(0, IS_HIGH_SURROGATE(text[longest - 1]) ? longest - 1 : longest) + L"...";
}

} // namespace addrbook
