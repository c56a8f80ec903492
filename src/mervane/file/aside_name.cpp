#include "mervane/file/aside_name.h"

#include <windows.h>

#include "mervane/file/folder_files.h"

namespace mervane {

namespace {

std::wstring NameOfNow()
{
    SYSTEMTIME now;
    GetLocalTime(&now);
    wchar_t text[32];
    swprintf(text, 32, L"%04d%02d%02d-%02d%02d%02d", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
             now.wSecond);
    return text;
}

} // namespace

std::wstring FreeNameOfNow(const std::function<bool(const std::wstring& name)>& isFree)
{
    const std::wstring now = NameOfNow();
    std::wstring name = now;
    for (int i = 2; !isFree(name); ++i)
        name = now + L"-" + std::to_wstring(i);
    return name;
}

std::wstring FreePathOfNow(const std::wstring& start)
{
    return start + FreeNameOfNow([&](const std::wstring& name) { return !FileExists(start + name); });
}

} // namespace mervane
