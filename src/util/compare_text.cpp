#include "util/compare_text.h"

#include <windows.h>

namespace {

// An empty text may have no address, which the system refuses.
int Compare(LCID locale, std::wstring_view a, std::wstring_view b, Case letters)
{
    const auto start = [](std::wstring_view text) { return text.empty() ? L"" : text.data(); };
    return CompareStringW(locale, letters == Case::Ignored ? NORM_IGNORECASE : 0, start(a),
                          static_cast<int>(a.size()), start(b), static_cast<int>(b.size()));
}

} // namespace

bool IsSameForUser(std::wstring_view a, std::wstring_view b, Case letters)
{
    return Compare(LOCALE_USER_DEFAULT, a, b, letters) == CSTR_EQUAL;
}

bool IsBehindForUser(std::wstring_view a, std::wstring_view b)
{
    return Compare(LOCALE_USER_DEFAULT, a, b, Case::Ignored) == CSTR_GREATER_THAN;
}

bool IsSameForSystem(std::wstring_view a, std::wstring_view b, Case letters)
{
    return Compare(LOCALE_SYSTEM_DEFAULT, a, b, letters) == CSTR_EQUAL;
}

bool IsSameName(std::wstring_view a, std::wstring_view b)
{
    return a.size() == b.size() &&
           (a.empty() || CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                              static_cast<int>(b.size()), TRUE) == CSTR_EQUAL);
}

bool NameStartsWith(std::wstring_view name, std::wstring_view start)
{
    return IsSameName(name.substr(0, start.size()), start);
}

bool NameEndsWith(std::wstring_view name, std::wstring_view end)
{
    return name.size() >= end.size() && IsSameName(name.substr(name.size() - end.size()), end);
}
