// Reads a file past SQLite, whoever else has it open.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <string>

namespace mervane {

// Of an error: there is no such file.
constexpr bool IsMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

class FileReader {
  public:
    explicit FileReader(const std::wstring& path);
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }
    // Whether something of it could not be read although it may be there: not that it is missing, or shorter.
    bool HasFailed() const { return m_hasFailed; }
    uint64_t Size() const; // 0 where it cannot be told
    // Hard links that lead to it; 0 where the drive does not tell.
    DWORD NameCount() const;
    // False also where the drive does not tell.
    bool IsOnReadOnlyVolume() const;
    // All of the bytes, or false.
    [[nodiscard]] bool Read(uint64_t offset, std::span<BYTE> bytes) const;

  private:
    bool Succeeds(BOOL call) const
    {
        m_hasFailed = m_hasFailed || !call;
        return call != FALSE;
    }

    HANDLE m_file;
    mutable bool m_hasFailed;
};

uint32_t BigEndianAt(std::span<const BYTE> bytes, size_t offset);

} // namespace mervane
