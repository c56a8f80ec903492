// How the cells of a text or blob property become sort keys: a text by itself, a blob by the names it refers
// to.
#pragma once

#include <optional>
#include <string>

#include "mervane/records/name_cache.h"
#include "mervane/records/record_values.h"
#include "mervane/values/sort_key.h"

namespace mervane {

// Which table a blob property's identifiers are records of.
std::optional<TableId> ReferredTable(CEPROPID blobProperty);

class KeySource {
  public:
    KeySource(Database& database, const TableInfo& table, const Property& property, NameCaches& names);

    // What the keys returned borrow lasts until the next call. None when the property is missing.
    std::optional<std::string_view> KeyOfCell(const Statement& row, int column);
    std::optional<std::string_view> KeyOfValue(const CEPROPVAL* value);
    std::optional<std::string_view> ReadKey(CEOID id);

  private:
    std::string_view KeyOfBlob(std::span<const BYTE> bytes);

    Database& m_database;
    const TableInfo& m_table;
    const Property& m_property;
    NameCaches& m_names;
    SortKeyMaker m_maker;
    std::wstring m_text;
    Statement m_select;
};

} // namespace mervane
