#include "mervane/sort_key.h"

#include <windows.h>

#include <climits>

namespace mervane {

namespace {

constexpr DWORD kFlags = LCMAP_SORTKEY | NORM_IGNORECASE;
constexpr size_t kMostUnits = INT_MAX / 16;

int MapKey(std::wstring_view text, std::string* key)
{
    return LCMapStringW(LOCALE_USER_DEFAULT, kFlags, text.data(), static_cast<int>(text.size()),
                        key ? reinterpret_cast<wchar_t*>(key->data()) : nullptr,
                        key ? static_cast<int>(key->size()) : 0);
}

} // namespace

std::string SortKey(std::wstring_view text)
{
    text = text.substr(0, kMostUnits);
    if (text.empty())
        return {};
    std::string key(text.size() * 4 + 32, '\0');
    int length = MapKey(text, &key);
    if (!length) {
        key.resize(static_cast<size_t>(MapKey(text, nullptr)));
        length = MapKey(text, &key);
    }
    key.resize(static_cast<size_t>(length));
    return key;
}

} // namespace mervane
