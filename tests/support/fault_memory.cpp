#include "support/fault_memory.h"

#include <sqlite3.h>

namespace {

sqlite3_mem_methods g_real;
int g_seen = 0;
int g_failAt = 0; // 0: none
bool g_stays = false;
bool g_fired = false;

bool IsRefused()
{
    ++g_seen;
    if (!g_failAt || g_seen < g_failAt || (g_seen > g_failAt && !g_stays))
        return false;
    return g_fired = true;
}

void* Allocate(int size)
{
    return IsRefused() ? nullptr : g_real.xMalloc(size);
}
void* Reallocate(void* block, int size)
{
    return IsRefused() ? nullptr : g_real.xRealloc(block, size);
}

} // namespace

FaultMemory::FaultMemory()
{
    FailNone();
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &g_real);
    sqlite3_mem_methods watched = g_real;
    watched.xMalloc = Allocate;
    watched.xRealloc = Reallocate;
    sqlite3_config(SQLITE_CONFIG_MALLOC, &watched);
    sqlite3_initialize();
}

FaultMemory::~FaultMemory()
{
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_MALLOC, &g_real);
    sqlite3_initialize();
}

void FaultMemory::FailNth(int n, bool stays)
{
    FailNone();
    g_failAt = n;
    g_stays = stays;
}

void FaultMemory::FailNone()
{
    g_seen = 0;
    g_failAt = 0;
    g_fired = false;
}

bool FaultMemory::HasFired() const
{
    return g_fired;
}
int FaultMemory::Seen() const
{
    return g_seen;
}
