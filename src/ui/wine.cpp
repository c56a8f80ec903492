#include "ui/wine.h"

#include <windows.h>

// Wine's library has a function more.
bool IsUnderWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}
