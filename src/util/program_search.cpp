#include "util/program_search.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr size_t kLongestPath = 32768; // characters
constexpr const wchar_t* kEnding = L".exe";

bool IsFullPath(const std::wstring& path)
{
    return path.starts_with(L"\\\\") || (path.size() > 2 && path[1] == L':' && path[2] == L'\\');
}

std::wstring SystemFolder(UINT(WINAPI* folderOf)(LPWSTR, UINT))
{
    wchar_t folder[MAX_PATH] = L"";
    const UINT size = folderOf(folder, MAX_PATH);
    return size > 0 && size < MAX_PATH ? folder : L"";
}

std::wstring Path()
{
    std::wstring path(kLongestPath, L'\0');
    path.resize(GetEnvironmentVariableW(L"PATH", path.data(), static_cast<DWORD>(path.size())));
    return path;
}

// PATH may name folders from the current one, which do not count.
std::wstring FoldersToSearch()
{
    std::wstring folders = SystemFolder(GetSystemDirectoryW) + L";" + SystemFolder(GetWindowsDirectoryW);
    const std::wstring path = Path();
    for (size_t begin = 0; begin < path.size();) {
        const size_t end = std::min(path.find(L';', begin), path.size());
        const std::wstring folder = path.substr(begin, end - begin);
        if (IsFullPath(folder))
            folders += L";" + folder;
        begin = end + 1;
    }
    return folders;
}

// By the name as it stands or with the ending of programs; empty when there is none.
std::wstring FindFile(const std::wstring& name)
{
    if (name.find_first_of(L"\\/:") == std::wstring::npos)
        return FindInSystem(name);
    if (!IsFullPath(name))
        return {};
    if (IsFile(name))
        return name;
    return IsFile(name + kEnding) ? name + kEnding : std::wstring();
}

} // namespace

void UseLibrariesOfSystemOnly()
{
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

bool IsFile(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::wstring FindInSystem(const std::wstring& name)
{
    std::wstring found(kLongestPath, L'\0');
    found.resize(SearchPathW(FoldersToSearch().c_str(), name.c_str(), kEnding,
                             static_cast<DWORD>(found.size()), found.data(), nullptr));
    return IsFile(found) ? found : std::wstring();
}

std::wstring ProgramOfCommand(const std::wstring& command)
{
    if (command.starts_with(L'"'))
        return FindFile(command.substr(1, command.find(L'"', 1) - 1));
    std::wstring found;
    for (size_t end = 0; found.empty() && end < command.size(); ++end) {
        end = std::min(command.find(L' ', end), command.size());
        if (end > 0)
            found = FindFile(command.substr(0, end));
    }
    return found;
}
