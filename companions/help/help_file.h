// The help's file, read whole and as text.
#pragma once

#include <string>
#include <string_view>

namespace help {

constexpr size_t kMaxHelpFile = 512 * 1024; // bytes

enum class FileState { Read, Missing, Unreadable, TooLarge, NoText };

struct HelpFile {
    FileState state = FileState::Missing;
    std::wstring text; // empty unless it was read
};

HelpFile ReadHelpFile(const std::wstring& path);

// Whether the bytes are those of a text: few of them, if any, are control characters.
bool IsText(std::string_view bytes);

// UTF-8, with or without its mark, or UTF-16 with its mark. What cannot be decoded becomes U+FFFD, a NUL too.
std::wstring DecodeText(std::string_view bytes);

} // namespace help
