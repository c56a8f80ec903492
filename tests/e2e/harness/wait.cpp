#include "e2e/harness/wait.h"

bool WaitFor(const std::function<bool()>& condition, DWORD limit)
{
    constexpr DWORD kPollInterval = 10;
    const ULONGLONG end = GetTickCount64() + limit;
    while (!condition()) {
        if (GetTickCount64() >= end)
            return false;
        Sleep(kPollInterval);
    }
    return true;
}

HWND WaitForWindow(const std::function<HWND()>& find, DWORD limit)
{
    HWND found = nullptr;
    WaitFor([&] { return (found = find()) != nullptr; }, limit);
    return found;
}
