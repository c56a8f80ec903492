#include "mervane/file/store_waiter.h"

namespace {

StoreWaiter g_waiter = nullptr;
bool g_isWaiting = false; // no wait begins inside another one

// What a control merely tells of itself changes nothing but what the window shows.
bool AsksForWork(UINT message, WPARAM wParam)
{
    constexpr WORD kFromAccelerator = 1; // a menu's and a button's is 0
    return message == WM_CLOSE || message == WM_SYSCOMMAND ||
           (message == WM_COMMAND && HIWORD(wParam) <= kFromAccelerator);
}

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

bool PutOffWhileWaiting(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return g_isWaiting && AsksForWork(message, wParam) && PostMessageW(window, message, wParam, lParam);
}

} // namespace mervane
