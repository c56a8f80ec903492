// What an open file is marked as, and whether its tables are the store's own.
#pragma once

#include "mervane/sqlite/sql_database.h"
#include "mervane/sqlite/store_header.h"

namespace mervane {

// Both or, while another program keeps the file to itself, -1: it may be ready between the two.
StoreMarks MarksIn(Database& database);

// Whether the three tables are exactly those that this program makes in a store of the version: what a tool
// may have put into their definitions (generated columns, checks, conflict clauses, references) would run at
// each write. A store of a newer version may have plain columns behind ours. Indexes of plain columns that
// keep nothing out do no harm, nor do other tables.
[[nodiscard]] bool HasOwnTables(Database& database, int64_t version);

} // namespace mervane
