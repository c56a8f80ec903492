#include "sql_watch.h"

#include <cstring>
#include <utility>

#include "passing_file.h"

namespace bench {

namespace {

SqlCounts g_counts;
sqlite3* g_newest = nullptr;
sqlite3_vfs* g_system = nullptr;

int Sync(sqlite3_file* file, int flags)
{
    ++g_counts.flushes;
    return RealMethods(file)->xSync(RealFile(file), flags);
}

int Lock(sqlite3_file* file, int level)
{
    ++g_counts.locks;
    return RealMethods(file)->xLock(RealFile(file), level);
}

int Unlock(sqlite3_file* file, int level)
{
    ++g_counts.locks;
    return RealMethods(file)->xUnlock(RealFile(file), level);
}

int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    ++g_counts.locks;
    return RealMethods(file)->xShmLock(RealFile(file), offset, count, flags);
}

sqlite3_io_methods WatchedMethods()
{
    sqlite3_io_methods methods = PassingMethods();
    methods.xSync = Sync;
    methods.xLock = Lock;
    methods.xUnlock = Unlock;
    methods.xShmLock = ShmLock;
    return methods;
}

int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    static const sqlite3_io_methods s_methods = WatchedMethods();
    auto* watched = reinterpret_cast<PassingFile*>(file);
    watched->base.pMethods = nullptr;
    watched->real = reinterpret_cast<sqlite3_file*>(watched + 1);
    watched->real->pMethods = nullptr;
    const int result = g_system->xOpen(g_system, name, watched->real, flags, outFlags);
    if (watched->real->pMethods)
        watched->base.pMethods = &s_methods;
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
    s_watch.szOsFile = static_cast<int>(sizeof(PassingFile)) + g_system->szOsFile;
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
