// The help's file, read whole and as text.
#pragma once

#include <cstddef>
#include <string>

namespace help {

constexpr size_t kMaxHelpFile = 512 * 1024; // bytes

enum class FileState { Read, Missing, Unreadable, TooLarge, NoText };

struct HelpFile {
    FileState state = FileState::Missing;
    std::wstring text; // empty unless it was read
};

HelpFile ReadHelpFile(const std::wstring& path);

} // namespace help
