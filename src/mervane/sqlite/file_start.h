// Whether the file under an open log is still what was brought into it.
#pragma once

#include <array>
#include <optional>

#include "mervane/file/database_header.h"
#include "mervane/file/trouble.h"
#include "mervane/sqlite/log_state.h"

namespace mervane {

// SQLite reads what the log does not have from the file, and never looks whether another tool has written
// over that: a backup that is copied into the open file, say, keeps the file's identity. Every copy of a
// store has its own counts in its beginning, or another size.
class FileStart {
  public:
    // OtherFile where the beginning or the size is not what it was the last time, though nothing has been
    // brought in since. None where they are, or that cannot be told. The database must use a log, and have
    // been read.
    StoreTrouble Look(Database& database);

  private:
    struct Seen {
        Checkpointed when;
        std::array<char, kDatabaseHeaderSize> header;
        int64_t size;
    };
    static std::optional<Seen> Read(Database& database);

    std::optional<Seen> m_seen;
    bool m_isOther = false;
};

} // namespace mervane
