#include "e2e/harness/process_state.h"

#include <cstdint>
#include <cstdio>

#include "util/owners.h"

namespace {

// Nothing is asked of the window itself: a process that is stuck does not answer.
BOOL CALLBACK PrintWindowOf(HWND window, LPARAM process)
{
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    wchar_t name[64] = L"";
    if (owner == static_cast<DWORD>(process) && GetClassNameW(window, name, 64))
        printf("  window %p of class %ls, %s, %s\n", static_cast<void*>(window), name,
               IsWindowVisible(window) ? "visible" : "hidden",
               IsWindowEnabled(window) ? "enabled" : "disabled");
    return TRUE;
}

uint64_t Milliseconds(const FILETIME& time)
{
    constexpr uint64_t kPerMillisecond = 10'000;
    return ((static_cast<uint64_t>(time.dwHighDateTime) << 32) + time.dwLowDateTime) / kPerMillisecond;
}

} // namespace

void PrintStateOf(DWORD process)
{
    const UniqueKernelHandle handle(OpenProcess(PROCESS_QUERY_INFORMATION | SYNCHRONIZE, FALSE, process));
    DWORD code = 0;
    FILETIME created{}, ended{}, kernel{}, user{};
    if (!handle || !GetExitCodeProcess(handle.get(), &code) ||
        !GetProcessTimes(handle.get(), &created, &ended, &kernel, &user)) {
        printf("process %lu: not found, error %lu\n", process, GetLastError());
        return;
    }
    if (WaitForSingleObject(handle.get(), 0) == WAIT_TIMEOUT)
        printf("process %lu runs", process);
    else
        printf("process %lu ended with 0x%08lX", process, code);
    printf(", after %llu ms of work\n",
           static_cast<unsigned long long>(Milliseconds(kernel) + Milliseconds(user)));
    EnumWindows(PrintWindowOf, static_cast<LPARAM>(process));
}
