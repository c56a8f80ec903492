// A blob or text property of all records in memory, as stored, by their places.
#pragma once

#include <optional>
#include <span>

#include "mervane/order/key_column.h"
#include "mervane/sqlite/sql_database.h"
#include "mervane/values/property_map.h"

namespace mervane {

class BlobColumn {
  public:
    // Of a longer value only the first limit bytes are kept; the whole is read when it is asked for.
    BlobColumn(Database& database, const TableInfo& table, const Property& property, uint32_t places,
               size_t limit);

    // New places lack the property.
    void Resize(uint32_t places) { m_kept.Resize(places); }
    void Set(uint32_t place, std::optional<std::span<const BYTE>> bytes);
    // The same of a row's cell.
    void Set(uint32_t place, const Statement& row, int column) { Set(place, BytesIn(row, column)); }

    // The bytes of the record with this place and identifier; none when the record lacks it. Borrowed until
    // the next call.
    std::optional<std::span<const BYTE>> At(uint32_t place, CEOID id);
    size_t Bytes() const { return m_kept.Bytes(); }

  private:
    std::optional<std::span<const BYTE>> BytesIn(const Statement& row, int column) const;
    std::optional<std::span<const BYTE>> ReadWhole(CEOID id);

    Database& m_database;
    const TableInfo& m_table;
    const Property& m_property;
    KeyColumn m_kept;
    std::vector<BYTE> m_whole;
    Statement m_select;
};

} // namespace mervane
