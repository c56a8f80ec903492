#include "bare_find.h"

#include <windows.h>

#include <sqlite3.h>

#include <array>

namespace bench {

namespace {

struct Bytes {
    const unsigned char* at;
    const unsigned char* end;
};

Bytes ColumnOf(const BareStatement& statement)
{
    const unsigned char* text = sqlite3_column_text(statement.Get(), 1);
    return {text, text + sqlite3_column_bytes(statement.Get(), 1)};
}

std::string SelectColumn(const char* column)
{
    return std::string("SELECT oid, ") + column + " FROM journal";
}

std::array<unsigned char, 256> MakeAsciiFolds()
{
    std::array<unsigned char, 256> folds{};
    for (size_t i = 0; i < folds.size(); ++i)
        folds[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + ('a' - 'A') : i);
    return folds;
}

std::vector<wchar_t> MakeFolds()
{
    std::vector<wchar_t> folds(0x10000);
    for (size_t i = 0; i < folds.size(); ++i)
        folds[i] = static_cast<wchar_t>(i);
    CharLowerBuffW(folds.data() + 1, 0xD7FF);
    return folds;
}

// One character of valid UTF-8; those beyond 16 bits count as one that is in no text.
wchar_t Next(const unsigned char*& at)
{
    const unsigned lead = *at++;
    if (lead < 0x80)
        return static_cast<wchar_t>(lead);
    unsigned code = lead & (lead >= 0xF0 ? 0x07u : lead >= 0xE0 ? 0x0Fu : 0x1Fu);
    while ((*at & 0xC0) == 0x80)
        code = code << 6 | (*at++ & 0x3Fu);
    return code < 0x10000 ? static_cast<wchar_t>(code) : L'\xFFFF';
}

template <typename IsIn> std::vector<CEOID> Collect(BareStore& store, const char* column, IsIn isIn)
{
    const BareStatement statement(store, SelectColumn(column).c_str());
    std::vector<CEOID> found;
    while (sqlite3_step(statement.Get()) == SQLITE_ROW)
        if (const Bytes text = ColumnOf(statement); text.at && isIn(text))
            found.push_back(static_cast<CEOID>(sqlite3_column_int64(statement.Get(), 0)));
    return found;
}

} // namespace

std::vector<CEOID> BareFindAscii(BareStore& store, const char* column, const std::string& text)
{
    static const auto folds = MakeAsciiFolds();
    std::string wanted;
    for (const char byte : text)
        wanted += static_cast<char>(folds[static_cast<unsigned char>(byte)]);
    const auto* pattern = reinterpret_cast<const unsigned char*>(wanted.data());
    const size_t length = wanted.size();
    return Collect(store, column, [&](const Bytes& stored) {
        if (static_cast<size_t>(stored.end - stored.at) < length)
            return false;
        for (const unsigned char* start = stored.at; start <= stored.end - length; ++start) {
            size_t i = 0;
            while (i < length && folds[start[i]] == pattern[i])
                ++i;
            if (i == length)
                return true;
        }
        return false;
    });
}

std::vector<CEOID> BareFindAny(BareStore& store, const char* column, const std::wstring& text)
{
    static const auto folds = MakeFolds();
    std::wstring wanted;
    for (const wchar_t unit : text)
        wanted += folds[unit];
    return Collect(store, column, [&](const Bytes& stored) {
        for (const unsigned char* start = stored.at; start < stored.end;) {
            const unsigned char* at = start;
            size_t i = 0;
            while (i < wanted.size() && at < stored.end && folds[Next(at)] == wanted[i])
                ++i;
            if (i == wanted.size())
                return true;
            Next(start);
        }
        return false;
    });
}

} // namespace bench
