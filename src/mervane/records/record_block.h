// A row of a table as the one LocalAlloc block that a record read hands out.
#pragma once

#include <span>

#include "mervane/sqlite/sql_database.h"
#include "mervane/values/property_map.h"

namespace mervane {

// One property of the answer.
struct WantedColumn {
    CEPROPID id;
    const Property* property; // null: the table has none of this identifier
    int column;               // its place in the row
};

// Packs the wanted columns of the statement's current row. Those that the row lacks are flagged, or left out
// when skipMissing is set; *count is the number of properties in the block. Null when there is no memory: a
// value that could not be read is not one that the row lacks.
CEPROPVAL* PackRow(const Statement& row, std::span<const WantedColumn> wanted, bool skipMissing, WORD* count);

// Whether a column of the current row has a value that a record read cannot give back as it is stored: one of
// another type than the property's, a number out of its range, a text with a NUL or with bytes that are none.
bool IsForeign(const Statement& row, const WantedColumn& wanted);

} // namespace mervane
