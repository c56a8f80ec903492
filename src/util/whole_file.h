// Files that are read and written as a whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

// Writes the bytes in place of what the file had. False when not all of them are on disk.
[[nodiscard]] bool WriteWholeFile(const wchar_t* path, const std::string& bytes);

// Nothing when it cannot be read, or has more bytes than the limit.
std::optional<std::string> ReadWholeFile(const wchar_t* path, uint64_t limit);
