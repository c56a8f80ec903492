#include "watched_files.h"

#include <sqlite3.h>

namespace {

WatchedFiles::Counts g_seen;
bool g_full = false;
bool g_failSyncs = false;
bool g_failReads = false;
int g_readsUntilFailure = -1;
const sqlite3_io_methods* g_real = nullptr;
sqlite3_io_methods g_watching;
sqlite3_vfs* g_realVfs = nullptr;
sqlite3_vfs g_vfs;

int Sync(sqlite3_file* file, int flags)
{
    ++g_seen.syncs;
    return g_failSyncs ? SQLITE_IOERR_FSYNC : g_real->xSync(file, flags);
}

int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 offset)
{
    ++g_seen.reads;
    const bool fails = g_failReads || g_readsUntilFailure == 0;
    if (g_readsUntilFailure >= 0)
        --g_readsUntilFailure;
    return fails ? SQLITE_IOERR_READ : g_real->xRead(file, data, size, offset);
}

int Fetch(sqlite3_file* file, sqlite3_int64 offset, int size, void** page)
{
    *page = nullptr;
    return g_failReads ? SQLITE_OK : g_real->xFetch(file, offset, size, page);
}

int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 offset)
{
    ++g_seen.writes;
    return g_full ? SQLITE_FULL : g_real->xWrite(file, data, size, offset);
}

int Lock(sqlite3_file* file, int level)
{
    ++g_seen.locks;
    return g_real->xLock(file, level);
}

int Unlock(sqlite3_file* file, int level)
{
    ++g_seen.locks;
    return g_real->xUnlock(file, level);
}

int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    ++g_seen.locks;
    return g_real->xShmLock(file, offset, count, flags);
}

int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    const int result = g_realVfs->xOpen(g_realVfs, name, file, flags, outFlags);
    if (result != SQLITE_OK || !file->pMethods)
        return result;
    g_real = file->pMethods;
    g_watching = *g_real;
    g_watching.xSync = Sync;
    g_watching.xRead = Read;
    g_watching.xFetch = Fetch;
    g_watching.xWrite = Write;
    g_watching.xLock = Lock;
    g_watching.xUnlock = Unlock;
    g_watching.xShmLock = ShmLock;
    file->pMethods = &g_watching;
    return result;
}

} // namespace

WatchedFiles::WatchedFiles()
{
    g_realVfs = sqlite3_vfs_find(nullptr);
    g_vfs = *g_realVfs;
    g_vfs.zName = "watched";
    g_vfs.xOpen = Open;
    sqlite3_vfs_register(&g_vfs, 1);
    Forget();
}

WatchedFiles::~WatchedFiles()
{
    FillDisk(false);
    FailSyncs(false);
    FailReads(false);
    FailOneRead(-1);
    sqlite3_vfs_unregister(&g_vfs);
}

const WatchedFiles::Counts& WatchedFiles::Seen() const
{
    return g_seen;
}
void WatchedFiles::Forget()
{
    g_seen = {};
}
void WatchedFiles::FillDisk(bool full)
{
    g_full = full;
}
void WatchedFiles::FailSyncs(bool fail)
{
    g_failSyncs = fail;
}
void WatchedFiles::FailReads(bool fail)
{
    g_failReads = fail;
}
void WatchedFiles::FailOneRead(int behind)
{
    g_readsUntilFailure = behind;
}
