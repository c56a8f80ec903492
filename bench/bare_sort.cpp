#include "bare_sort.h"

#include <windows.h>

#include <sqlite3.h>

namespace bench {

namespace {

constexpr DWORD kFlags = LCMAP_SORTKEY | NORM_IGNORECASE;

std::string KeyOf(const wchar_t* text, int length)
{
    char key[4096];
    const int size = LCMapStringW(LOCALE_USER_DEFAULT, kFlags, text, length, reinterpret_cast<wchar_t*>(key),
                                  static_cast<int>(sizeof key));
    return {key, static_cast<size_t>(size)};
}

std::string SelectColumn(const char* column)
{
    return std::string("SELECT oid, ") + column + " FROM journal";
}

} // namespace

bool TextKey::operator<(const TextKey& other) const
{
    if (key.empty() != other.key.empty())
        return other.key.empty();
    const int order = key.compare(other.key);
    return order ? order < 0 : id < other.id;
}

bool NumberKey::operator<(const NumberKey& other) const
{
    return number != other.number ? number < other.number : id < other.id;
}

std::vector<TextKey> ReadTextKeys(BareStore& store, const char* column)
{
    const BareStatement statement(store, SelectColumn(column).c_str());
    std::vector<TextKey> keys;
    while (sqlite3_step(statement.Get()) == SQLITE_ROW) {
        TextKey key{static_cast<CEOID>(sqlite3_column_int64(statement.Get(), 0)), {}};
        if (const void* text = sqlite3_column_text16(statement.Get(), 1))
            key.key =
                KeyOf(static_cast<const wchar_t*>(text), sqlite3_column_bytes16(statement.Get(), 1) / 2);
        keys.push_back(std::move(key));
    }
    return keys;
}

std::vector<NumberKey> ReadNumberKeys(BareStore& store, const char* column)
{
    const BareStatement statement(store, SelectColumn(column).c_str());
    std::vector<NumberKey> keys;
    while (sqlite3_step(statement.Get()) == SQLITE_ROW) {
        const bool missing = sqlite3_column_type(statement.Get(), 1) == SQLITE_NULL;
        keys.push_back({static_cast<CEOID>(sqlite3_column_int64(statement.Get(), 0)),
                        missing ? INT64_MAX : sqlite3_column_int64(statement.Get(), 1)});
    }
    return keys;
}

} // namespace bench
