// The help's file, read whole and as text.
#pragma once

#include <cstddef>
#include <string>

namespace help {

constexpr size_t kMaxHelpFile = 512 * 1024; // bytes

// Foreign: it lies where no help is read. TooMuch: it was read, but would take too long to show.
enum class FileState { Read, Missing, Unreadable, TooLarge, NoText, Foreign, TooMuch };

struct HelpFile {
    FileState state = FileState::Missing;
    std::wstring text; // empty unless it was read
};

// A device is not read, whatever its name.
HelpFile ReadHelpFile(const std::wstring& path);

} // namespace help
