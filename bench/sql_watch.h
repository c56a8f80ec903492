// Looks at SQLite from both sides without touching the code that uses it: what it is asked (statements) and
// what it asks of the system (flushes, locks).
#pragma once

#include <cstdint>

struct sqlite3;

namespace bench {

struct SqlCounts {
    uint64_t statements = 0; // begun, transactions' own included
    uint64_t begins = 0;     // of them: BEGIN
    uint64_t flushes = 0;
    uint64_t locks = 0; // taken or given back, of the file or of the log's index
};

// Either once, before any connection is opened. Counting costs time, so what is timed is not counted.
void RememberConnections();
void CountSql();
// What has been counted since the last call.
SqlCounts TakeSqlCounts();
// The connection opened last, by whomever.
sqlite3* NewestConnection();

} // namespace bench
