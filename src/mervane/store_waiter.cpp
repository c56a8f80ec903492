#include "mervane/store_waiter.h"

namespace {

StoreWaiter g_waiter = nullptr;
bool g_isWaiting = false; // no wait begins inside another one

} // namespace

void SetStoreWaiter(StoreWaiter waiter)
{
    g_waiter = waiter;
}

namespace mervane {

void WaitForStore(DWORD milliseconds)
{
    g_isWaiting = true;
    if (g_waiter)
        g_waiter(milliseconds);
    else
        Sleep(milliseconds);
    g_isWaiting = false;
}

bool IsWaitingForStore()
{
    return g_isWaiting;
}

} // namespace mervane
