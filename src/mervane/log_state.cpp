#include "mervane/log_state.h"

#include <sqlite3.h>

#include <cstring>

#include "mervane/sql_database.h"

namespace mervane {

namespace {

// The beginning of a log's index, in the form that SQLite's file format fixes: two copies of a header.
constexpr int kIndexRegion = 32 * 1024;
constexpr size_t kWords = 12; // of a header
constexpr size_t kCommitCount = 2;
constexpr size_t kFrameCheck = 6;
constexpr int kMostTries = 100; // until the two copies are equal: a commit writes one after the other

bool ReadHeader(const volatile uint32_t* index, uint32_t* header)
{
    uint32_t second[kWords];
    for (size_t i = 0; i < kWords; ++i)
        header[i] = index[i];
    MemoryBarrier();
    for (size_t i = 0; i < kWords; ++i)
        second[i] = index[kWords + i];
    return memcmp(header, second, sizeof second) == 0;
}

} // namespace

std::optional<LogState> ReadLogState(Database& database)
{
    sqlite3_file* file = nullptr;
    volatile void* index = nullptr;
    if (sqlite3_file_control(database.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        !file || !file->pMethods || file->pMethods->iVersion < 2 ||
        file->pMethods->xShmMap(file, 0, kIndexRegion, 0, &index) != SQLITE_OK || !index)
        return std::nullopt;
    uint32_t header[kWords];
    for (int i = 0; i < kMostTries; ++i)
        if (ReadHeader(static_cast<const volatile uint32_t*>(index), header))
            return LogState{header[kCommitCount],
                            uint64_t{header[kFrameCheck]} << 32 | header[kFrameCheck + 1]};
    return std::nullopt;
}

} // namespace mervane
