// Names in the folder of temporary files.
#pragma once

#include <windows.h>

#include <string>

// With a backslash at its end.
inline std::wstring TemporaryFolder()
{
    wchar_t folder[MAX_PATH + 1];
    return {folder, GetTempPathW(MAX_PATH + 1, folder)};
}

// The full path of a name that no other running program has. Nothing is made.
inline std::wstring TemporaryName(const std::wstring& name)
{
    return TemporaryFolder() + name + L"-" + std::to_wstring(GetCurrentProcessId());
}
