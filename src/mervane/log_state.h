// Which commit a store's write-ahead log ends with.
#pragma once

#include <cstdint>
#include <optional>

namespace mervane {

class Database;

struct LogState {
    uint32_t number; // counts commits, whoever makes them
    uint64_t check;  // the checksum of all that the log holds up to there

    bool operator==(const LogState&) const = default;
};

// Read from the log's index, so it may be newer than what an open transaction sees. The database must use a
// log, and have been read; none when the index cannot be looked at.
std::optional<LogState> ReadLogState(Database& database);

} // namespace mervane
