#include "mervane/file/folder_files.h"

#include <windows.h>

#include "mervane/file/file_reader.h"

namespace mervane {

bool FileExists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool MayExist(const std::wstring& path)
{
    return FileExists(path) || !IsMissing(GetLastError());
}

bool MayHaveContent(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return !IsMissing(GetLastError());
    return data.nFileSizeLow || data.nFileSizeHigh;
}

std::optional<std::vector<std::wstring>> FilesLike(const std::wstring& pattern)
{
    std::vector<std::wstring> files;
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        return IsMissing(error) ? std::optional(files) : std::nullopt;
    }
    do
        if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            files.emplace_back(data.cFileName);
    while (FindNextFileW(search, &data));
    const DWORD end = GetLastError();
    FindClose(search);
    SetLastError(end);
    return end == ERROR_NO_MORE_FILES ? std::optional(std::move(files)) : std::nullopt;
}

} // namespace mervane
