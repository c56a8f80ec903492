// Which files there are.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mervane {

// A file or a folder; false also where it cannot be told.
bool FileExists(const std::wstring& path);
// True also where it cannot be told.
bool MayExist(const std::wstring& path);
// Whether the file is there and not empty, or may be.
bool MayHaveContent(const std::wstring& path);

// The names of the files, without folders, that a path with "*" stands for; none when it cannot be told, and
// the system's last error says why.
std::optional<std::vector<std::wstring>> FilesLike(const std::wstring& pattern);

} // namespace mervane
