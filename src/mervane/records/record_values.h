// A record's values on their way in: a property array checked against its table and brought to columns.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "mervane/sqlite/sql_database.h"
#include "mervane/values/property_map.h"

namespace mervane {

// What a write does to the columns of its mask (bit = place in the table's property list).
class RecordValues {
  public:
    // false when a property is unknown, its type is not the table's, or its text or blob has no address. A
    // property sent twice counts as sent last; one flagged CEDB_PROPNOTFOUND says nothing and is passed over.
    [[nodiscard]] bool Read(const TableInfo& table, WORD count, const CEPROPVAL* properties);

    uint32_t Mask() const { return m_mask; }
    bool Changes(int index) const { return (m_mask >> index & 1) != 0; }
    // null: the write removes the property, or does not touch it.
    const CEPROPVAL* Value(int index) const { return m_values[static_cast<size_t>(index)]; }
    // The value of a numeric property; none when there is no value.
    std::optional<int64_t> Number(int index) const;
    // The same of a text, in UTF-8, or a blob; borrowed from this object or from the property array.
    std::optional<std::span<const BYTE>> Bytes(int index) const;
    // Binds the value of a property; it is borrowed from the property array and from this object.
    void Bind(Statement& statement, int parameter, int index) const;

  private:
    bool Take(const TableInfo& table, const CEPROPVAL& property);
    std::string_view Text(int index) const;

    uint32_t m_mask = 0;
    std::array<const CEPROPVAL*, kMaxProperties> m_values{};
    // The texts in UTF-8, in one block: where each begins in it and how long it is.
    struct TextPlace {
        size_t start = 0;
        size_t length = 0;
    };
    std::array<TextPlace, kMaxProperties> m_texts{};
    std::string m_textBytes;
};

inline uint64_t CountOf(const FILETIME& time)
{
    return uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

// A stored number as a property of its type: none when it is outside the type's range.
std::optional<int64_t> InRange(const Property& property, int64_t stored);

} // namespace mervane
