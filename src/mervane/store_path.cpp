#include "mervane/store_path.h"

#include <windows.h>

namespace mervane {

namespace {

std::wstring EnvironmentText(const wchar_t* name)
{
    std::wstring text(MAX_PATH, L'\0');
    DWORD length = GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size()));
    if (length >= text.size()) {
        text.resize(length);
        length = GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size()));
    }
    text.resize(length);
    return text;
}

std::wstring FullPath(const std::wstring& path)
{
    std::wstring full(MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length >= full.size()) {
        full.resize(length);
        length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    }
    full.resize(length);
    return full;
}

bool IsFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

std::wstring StorePath()
{
    const std::wstring named = EnvironmentText(L"MERVANE_STORE");
    if (!named.empty())
        return FullPath(named);
    const std::wstring appData = EnvironmentText(L"APPDATA");
    return appData.empty() ? std::wstring() : FullPath(appData + L"\\Quillmarsh\\Journal\\journal.db");
}

std::wstring PathKey(const std::wstring& path)
{
    std::wstring key = path;
    CharLowerBuffW(key.data(), static_cast<DWORD>(key.size()));
    return key;
}

// FNV-1a.
uint64_t StoreNumber(const std::wstring& path)
{
    uint64_t number = 0xCBF29CE484222325;
    for (const wchar_t unit : PathKey(path)) {
        number = (number ^ (unit & 0xFF)) * 0x100000001B3;
        number = (number ^ (unit >> 8)) * 0x100000001B3;
    }
    return number > 1 ? number : 2;
}

bool MakeFolderOf(const std::wstring& path)
{
    const size_t end = path.find_last_of(L"\\/");
    if (end == std::wstring::npos)
        return true;
    const std::wstring folder = path.substr(0, end);
    if (IsFolder(folder))
        return true;
    return MakeFolderOf(folder) && (CreateDirectoryW(folder.c_str(), nullptr) || IsFolder(folder));
}

} // namespace mervane
