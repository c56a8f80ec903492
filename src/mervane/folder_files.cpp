#include "mervane/folder_files.h"

#include <windows.h>

namespace mervane {

std::optional<std::vector<std::wstring>> FilesLike(const std::wstring& pattern)
{
    std::vector<std::wstring> files;
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        const bool isEmpty = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        return isEmpty ? std::optional(files) : std::nullopt;
    }
    do
        if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            files.emplace_back(data.cFileName);
    while (FindNextFileW(search, &data));
    const bool isAll = GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    return isAll ? std::optional(std::move(files)) : std::nullopt;
}

} // namespace mervane
