// Files that are read and written as a whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

// Puts a file of these bytes, whole or not at all, in place of the one that was there: they are written to a
// new file beside it first, "path.new" or, where there is one of that name, "path.new2" and so on. False when
// not all of them are on disk: what was there is as it was.
[[nodiscard]] bool ReplaceWholeFile(const std::wstring& path, const std::string& bytes);

// Nothing when it cannot be read, or has more bytes than the limit.
std::optional<std::string> ReadWholeFile(const wchar_t* path, uint64_t limit);
