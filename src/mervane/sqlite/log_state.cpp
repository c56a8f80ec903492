#include "mervane/sqlite/log_state.h"

#include <sqlite3.h>

#include <cstring>

#include "mervane/sqlite/sql_database.h"

namespace mervane {

namespace {

// The beginning of a log's index, in the form that SQLite's file format fixes: two copies of a header.
constexpr int kIndexRegion = 32 * 1024;
constexpr size_t kWords = 12; // of a header
constexpr size_t kCommitCount = 2;
constexpr size_t kFrameCheck = 6;
constexpr size_t kSalt = 8;
// Behind the headers: how many frames are in the file, and how many somebody set out to bring in.
constexpr size_t kBroughtIn = 24;
constexpr size_t kBegun = 32;
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

const volatile uint32_t* IndexOf(Database& database)
{
    sqlite3_file* file = database.File();
    volatile void* index = nullptr;
    if (!file || file->pMethods->iVersion < 2 ||
        file->pMethods->xShmMap(file, 0, kIndexRegion, 0, &index) != SQLITE_OK)
        return nullptr;
    return static_cast<const volatile uint32_t*>(index);
}

bool ReadWholeHeader(const volatile uint32_t* index, uint32_t* header)
{
    for (int i = 0; i < kMostTries; ++i)
        if (ReadHeader(index, header))
            return true;
    return false;
}

uint64_t Pair(const uint32_t* words)
{
    return uint64_t{words[0]} << 32 | words[1];
}

} // namespace

std::optional<LogState> ReadLogState(Database& database)
{
    const volatile uint32_t* index = IndexOf(database);
    uint32_t header[kWords];
    if (!index || !ReadWholeHeader(index, header))
        return std::nullopt;
    return LogState{header[kCommitCount], Pair(header + kFrameCheck)};
}

std::optional<Checkpointed> ReadCheckpointed(Database& database)
{
    const volatile uint32_t* index = IndexOf(database);
    uint32_t header[kWords];
    if (!index || !ReadWholeHeader(index, header))
        return std::nullopt;
    const uint32_t frames = index[kBroughtIn];
    if (frames != index[kBegun])
        return std::nullopt;
    return Checkpointed{Pair(header + kSalt), frames};
}

} // namespace mervane
