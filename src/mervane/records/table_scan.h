// A pass over all records of a table.
#pragma once

#include <functional>
#include <string>

#include "mervane/sqlite/sql_database.h"
#include "mervane/values/ce_types.h"

namespace mervane {

using OnScannedRow = std::function<void(CEOID id, const Statement& row)>;

// Calls onRow for each record with a valid identifier, in any order; columns is an SQL list, whose columns
// are numbered from 1 in the row. None when it came to all; otherwise why it did not. Of a damaged table or
// index (Damaged) it reads what can be read, as around a value that is too large (TooLarge). A record may
// come twice; the other reasons may pass. That is answered and not noted with the database.
[[nodiscard]] StoreTrouble ScanTable(Database& database, const char* table, const std::string& columns,
                                     const OnScannedRow& onRow);

} // namespace mervane
