// Reads a file past SQLite, whoever else has it open.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <string>

namespace mervane {

class FileReader {
  public:
    explicit FileReader(const std::wstring& path);
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }
    uint64_t Size() const;
    // Hard links that lead to it; 0 where the drive does not tell.
    DWORD NameCount() const;
    // All of the bytes, or false.
    [[nodiscard]] bool Read(uint64_t offset, std::span<BYTE> bytes) const;

  private:
    HANDLE m_file;
};

uint32_t BigEndianAt(std::span<const BYTE> bytes, size_t offset);

} // namespace mervane
