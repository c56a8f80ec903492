#include "mervane/aside_name.h"

#include <windows.h>

namespace mervane {

std::wstring NameOfNow()
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t text[32];
    swprintf(text, 32, L"%04d%02d%02d-%02d%02d%02d", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
             now.wSecond);
    return text;
}

} // namespace mervane
