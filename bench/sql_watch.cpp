#include "sql_watch.h"

#include <sqlite3.h>

#include <cstring>
#include <utility>

namespace bench {

namespace {

SqlCounts g_counts;
sqlite3* g_newest = nullptr;
sqlite3_vfs* g_system = nullptr;
const sqlite3_io_methods* g_real = nullptr;
sqlite3_io_methods g_watching;

int Sync(sqlite3_file* file, int flags)
{
    ++g_counts.flushes;
    return g_real->xSync(file, flags);
}

int Lock(sqlite3_file* file, int level)
{
    ++g_counts.locks;
    return g_real->xLock(file, level);
}

int Unlock(sqlite3_file* file, int level)
{
    ++g_counts.locks;
    return g_real->xUnlock(file, level);
}

int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    ++g_counts.locks;
    return g_real->xShmLock(file, offset, count, flags);
}

// All of the system's files have the same methods.
int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    const int result = g_system->xOpen(g_system, name, file, flags, outFlags);
    if (!file->pMethods)
        return result;
    g_real = file->pMethods;
    g_watching = *g_real;
    g_watching.xSync = Sync;
    g_watching.xLock = Lock;
    g_watching.xUnlock = Unlock;
    g_watching.xShmLock = ShmLock;
    file->pMethods = &g_watching;
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
