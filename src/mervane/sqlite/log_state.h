// Which commit a store's write-ahead log ends with, and what it has given to the file.
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

// While these are equal nobody who goes by the log has written into the file.
struct Checkpointed {
    uint64_t log;    // which one: it is begun anew when the file has all of it
    uint32_t frames; // of it that the file has

    bool operator==(const Checkpointed&) const = default;
};

// On the same terms; none also while frames are being brought in.
std::optional<Checkpointed> ReadCheckpointed(Database& database);

} // namespace mervane
