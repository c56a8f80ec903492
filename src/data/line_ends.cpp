#include "data/line_ends.h"

bool HasLoneLineEnd(std::wstring_view text)
{
    for (size_t at = text.find_first_of(L"\r\n"); at != std::wstring_view::npos;
         at = text.find_first_of(L"\r\n", at + 2))
        if (text[at] != L'\r' || at + 1 == text.size() || text[at + 1] != L'\n')
            return true;
    return false;
}

std::wstring WithLineEnds(std::wstring_view text)
{
    if (!HasLoneLineEnd(text))
        return std::wstring(text);
    std::wstring lines;
    lines.reserve(text.size() + text.size() / 16);
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] != L'\r' && text[at] != L'\n') {
            lines += text[at];
            continue;
        }
        lines += L"\r\n";
        if (text[at] == L'\r' && at + 1 < text.size() && text[at + 1] == L'\n')
            ++at;
    }
    return lines;
}
