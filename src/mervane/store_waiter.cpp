#include "mervane/store_waiter.h"

namespace {

StoreWaiter g_waiter = nullptr;

} // namespace

void SetStoreWaiter(StoreWaiter waiter)
{
    g_waiter = waiter;
}

namespace mervane {

void WaitForStore(DWORD milliseconds)
{
    if (g_waiter)
        g_waiter(milliseconds);
    else
        Sleep(milliseconds);
}

} // namespace mervane
