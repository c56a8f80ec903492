#include "mervane/values/sort_key.h"

#include <windows.h>

#include <algorithm>
#include <climits>

namespace mervane {

namespace {

constexpr DWORD kFlags = LCMAP_SORTKEY | NORM_IGNORECASE;
constexpr size_t kMostUnits = INT_MAX / 16;

// With LCMAP_SORTKEY the buffer is one of bytes, whatever its type says.
int MapKey(std::wstring_view text, std::string* key)
{
    return LCMapStringW(LOCALE_USER_DEFAULT, kFlags, text.data(), static_cast<int>(text.size()),
                        key ? reinterpret_cast<wchar_t*>(key->data()) : nullptr,
                        key ? static_cast<int>(key->size()) : 0);
}

} // namespace

std::string_view SortKeyMaker::Make(std::wstring_view text)
{
    text = text.substr(0, kMostUnits);
    if (text.empty())
        return {};
    const size_t usual = text.size() * 4 + 64;
    if (m_buffer.size() < usual)
        m_buffer.resize(std::max(usual, m_buffer.size() * 2));
    int length = MapKey(text, &m_buffer);
    if (!length) {
        m_buffer.resize(static_cast<size_t>(MapKey(text, nullptr)));
        length = MapKey(text, &m_buffer);
    }
    return {m_buffer.data(), static_cast<size_t>(length)};
}

} // namespace mervane
