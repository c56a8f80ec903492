// A program to be started by the tests: writes its command line into the file that COMMAND_LINE_FILE names.
#include <windows.h>

#include <string>

#include "util/owners.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int)
{
    wchar_t path[MAX_PATH];
    const DWORD length = GetEnvironmentVariableW(L"COMMAND_LINE_FILE", path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return 1;
    HANDLE opened = CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE)
        return 1;
    const UniqueKernelHandle file(opened);
    const std::wstring line = std::wstring(GetCommandLineW()) + L"\n";
    DWORD written = 0;
    return WriteFile(file.get(), line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &written,
                     nullptr)
               ? 0
               : 1;
}
