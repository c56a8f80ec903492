// Files as the import reads and the export writes them.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "util/owners.h"

namespace addrbook {

// A file that is read from its start to its end.
class InputFile {
  public:
    [[nodiscard]] bool Open(const std::wstring& path);
    // Up to size bytes; 0 at the end and when reading fails.
    size_t Read(char* buffer, size_t size);
    bool HasFailed() const { return m_failed; }
    uint64_t Size() const { return m_size; }
    uint64_t Position() const { return m_position; }

  private:
    UniqueKernelHandle m_file;
    uint64_t m_size = 0;
    uint64_t m_position = 0;
    bool m_failed = false;
};

// A file that takes its place only when it is whole: until then it lies beside it under another name.
class OutputFile {
  public:
    OutputFile() = default;
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] bool Open(const std::wstring& path);
    [[nodiscard]] bool Write(std::string_view bytes);
    // Puts it in its place. Without it, or when it fails, whatever was there stays.
    [[nodiscard]] bool Finish();

  private:
    std::wstring m_path;
    UniqueKernelHandle m_file;
};

} // namespace addrbook
