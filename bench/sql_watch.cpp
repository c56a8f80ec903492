#include "sql_watch.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstring>
#include <utility>

namespace bench {

namespace {

SqlCounts g_counts;
sqlite3* g_newest = nullptr;
sqlite3_vfs* g_system = nullptr;

// A file of the watching system layer: the real one stands behind it in the same block.
struct WatchedFile {
    sqlite3_file base;
    sqlite3_io_methods methods;

    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

WatchedFile* Watched(sqlite3_file* file)
{
    return reinterpret_cast<WatchedFile*>(file);
}

sqlite3_file* Real(sqlite3_file* file)
{
    return Watched(file)->Real();
}

int Close(sqlite3_file* file)
{
    return Real(file)->pMethods->xClose(Real(file));
}

int Read(sqlite3_file* file, void* to, int size, sqlite3_int64 offset)
{
    return Real(file)->pMethods->xRead(Real(file), to, size, offset);
}

int Write(sqlite3_file* file, const void* from, int size, sqlite3_int64 offset)
{
    return Real(file)->pMethods->xWrite(Real(file), from, size, offset);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size)
{
    return Real(file)->pMethods->xTruncate(Real(file), size);
}

int Sync(sqlite3_file* file, int flags)
{
    ++g_counts.flushes;
    return Real(file)->pMethods->xSync(Real(file), flags);
}

int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return Real(file)->pMethods->xFileSize(Real(file), size);
}

int Lock(sqlite3_file* file, int level)
{
    ++g_counts.locks;
    return Real(file)->pMethods->xLock(Real(file), level);
}

int Unlock(sqlite3_file* file, int level)
{
    ++g_counts.locks;
    return Real(file)->pMethods->xUnlock(Real(file), level);
}

int CheckReservedLock(sqlite3_file* file, int* result)
{
    return Real(file)->pMethods->xCheckReservedLock(Real(file), result);
}

int FileControl(sqlite3_file* file, int operation, void* argument)
{
    return Real(file)->pMethods->xFileControl(Real(file), operation, argument);
}

int SectorSize(sqlite3_file* file)
{
    return Real(file)->pMethods->xSectorSize(Real(file));
}

int DeviceCharacteristics(sqlite3_file* file)
{
    return Real(file)->pMethods->xDeviceCharacteristics(Real(file));
}

int ShmMap(sqlite3_file* file, int page, int size, int extend, void volatile** to)
{
    return Real(file)->pMethods->xShmMap(Real(file), page, size, extend, to);
}

int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    ++g_counts.locks;
    return Real(file)->pMethods->xShmLock(Real(file), offset, count, flags);
}

void ShmBarrier(sqlite3_file* file)
{
    Real(file)->pMethods->xShmBarrier(Real(file));
}

int ShmUnmap(sqlite3_file* file, int remove)
{
    return Real(file)->pMethods->xShmUnmap(Real(file), remove);
}

int Fetch(sqlite3_file* file, sqlite3_int64 offset, int size, void** to)
{
    return Real(file)->pMethods->xFetch(Real(file), offset, size, to);
}

int Unfetch(sqlite3_file* file, sqlite3_int64 offset, void* page)
{
    return Real(file)->pMethods->xUnfetch(Real(file), offset, page);
}

constexpr sqlite3_io_methods kMethods = {3,
                                         Close,
                                         Read,
                                         Write,
                                         Truncate,
                                         Sync,
                                         FileSize,
                                         Lock,
                                         Unlock,
                                         CheckReservedLock,
                                         FileControl,
                                         SectorSize,
                                         DeviceCharacteristics,
                                         ShmMap,
                                         ShmLock,
                                         ShmBarrier,
                                         ShmUnmap,
                                         Fetch,
                                         Unfetch};

int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    WatchedFile* watched = Watched(file);
    memset(watched, 0, sizeof *watched);
    const int result = g_system->xOpen(g_system, name, watched->Real(), flags, outFlags);
    if (watched->Real()->pMethods) {
        watched->methods = kMethods;
        watched->methods.iVersion = watched->Real()->pMethods->iVersion;
        watched->base.pMethods = &watched->methods;
    }
    return result;
}

int OnTrace(unsigned, void*, void*, void* text)
{
    ++g_counts.statements;
    g_counts.begins += strncmp(static_cast<const char*>(text), "BEGIN", 5) == 0;
    return 0;
}

int OnConnection(sqlite3* connection, char**, const void*)
{
    g_newest = connection;
    if (g_system)
        sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, OnTrace, nullptr);
    return SQLITE_OK;
}

} // namespace

void RememberConnections()
{
    using EntryPoint = void (*)();
    sqlite3_auto_extension(reinterpret_cast<EntryPoint>(OnConnection));
}

void CountSql()
{
    static sqlite3_vfs s_watch;
    g_system = sqlite3_vfs_find(nullptr);
    s_watch = *g_system;
    s_watch.zName = "watch";
    s_watch.szOsFile = static_cast<int>(sizeof(WatchedFile)) + g_system->szOsFile;
    s_watch.xOpen = Open;
    sqlite3_vfs_register(&s_watch, 1);
    RememberConnections();
}

SqlCounts TakeSqlCounts()
{
    return std::exchange(g_counts, SqlCounts{});
}

sqlite3* NewestConnection()
{
    return g_newest;
}

} // namespace bench
