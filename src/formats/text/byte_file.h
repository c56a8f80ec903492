// Files of bytes: one that is read from its start to its end, one that takes its place only when it is whole.
// A failure is told by the answer and leaves nothing half done; there are no boxes and no exceptions.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "util/owners.h"

namespace text {

// A file that is read from its start to its end.
class InputFile {
  public:
    [[nodiscard]] bool Open(const std::wstring& path);
    // Up to size bytes, at most 1 MiB; 0 at the end and when reading fails, which HasFailed tells apart.
    size_t Read(char* buffer, size_t size);
    bool HasFailed() const { return m_failed; }
    uint64_t Size() const { return m_size; } // 0 for a pipe, which has none
    uint64_t Position() const { return m_position; }

  private:
    UniqueKernelHandle m_file;
    uint64_t m_size = 0;
    uint64_t m_position = 0;
    bool m_failed = false;
};

// A file that takes its place only when it is whole: until then it lies beside it under a name that no other
// file has. Whatever fails, a file that was there before stays as it was.
class OutputFile {
  public:
    OutputFile() = default;
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] bool Open(const std::wstring& path);
    [[nodiscard]] bool Write(std::string_view bytes);
    [[nodiscard]] bool Finish(); // puts it in its place
    void Discard();              // what was written so far; Open begins anew

    // The system's number for why the last of these failed: ERROR_SHARING_VIOLATION also where another
    // program has the file open whose place this one was to take.
    DWORD Error() const { return m_error; }

  private:
    bool Check(bool succeeded);
    bool TakePlace();

    std::wstring m_path;
    std::wstring m_unfinishedPath;
    UniqueKernelHandle m_file;
    DWORD m_error = 0;
};

} // namespace text
