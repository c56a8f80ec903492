// A text cut to a length.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

// The text's first characters, at most most of them, with no surrogate pair cut in half. One that has lost
// its other half before stays as it is. Borrowed.
inline std::wstring_view CutText(std::wstring_view text, size_t most)
{
    if (text.size() <= most)
        return text;
    const bool halves = most > 0 && IS_SURROGATE_PAIR(text[most - 1], text[most]);
    return text.substr(0, halves ? most - 1 : most);
}

constexpr size_t kLongestShownName = 80; // characters, where a box names what a file brings

// For a box that names something: at most longest characters, three dots where there are more.
inline std::wstring Shortened(std::wstring_view text, size_t longest)
{
    return std::wstring(CutText(text, longest)) + (text.size() > longest ? L"..." : L"");
}
