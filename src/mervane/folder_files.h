// What lies in a folder.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mervane {

// The names of the files, without folders, that a path with "*" stands for; none when it cannot be told.
std::optional<std::vector<std::wstring>> FilesLike(const std::wstring& pattern);

} // namespace mervane
