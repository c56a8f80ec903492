#include "addrbook/byte_file.h"

namespace addrbook {

namespace {

HANDLE OrNull(HANDLE file)
{
    return file == INVALID_HANDLE_VALUE ? nullptr : file;
}

std::wstring UnfinishedName(const std::wstring& path)
{
    return path + L".part";
}

} // namespace

bool InputFile::Open(const std::wstring& path)
{
    m_file.reset(OrNull(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)));
    LARGE_INTEGER size;
    if (!m_file || !GetFileSizeEx(m_file.get(), &size))
        return false;
    m_size = static_cast<uint64_t>(size.QuadPart);
    return true;
}

size_t InputFile::Read(char* buffer, size_t size)
{
    constexpr size_t kMost = size_t{1} << 20;
    DWORD read = 0;
    if (!ReadFile(m_file.get(), buffer, static_cast<DWORD>(size < kMost ? size : kMost), &read, nullptr)) {
        m_failed = true;
        return 0;
    }
    m_position += read;
    return read;
}

OutputFile::~OutputFile()
{
    if (!m_file)
        return;
    m_file.reset();
    DeleteFileW(UnfinishedName(m_path).c_str());
}

bool OutputFile::Open(const std::wstring& path)
{
    m_path = path;
    m_file.reset(OrNull(CreateFileW(UnfinishedName(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr)));
    return m_file != nullptr;
}

bool OutputFile::Write(std::string_view bytes)
{
    DWORD written = 0;
    return WriteFile(m_file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

bool OutputFile::Finish()
{
    if (!FlushFileBuffers(m_file.get()))
        return false;
    m_file.reset();
    if (MoveFileExW(UnfinishedName(m_path).c_str(), m_path.c_str(), MOVEFILE_REPLACE_EXISTING))
        return true;
    DeleteFileW(UnfinishedName(m_path).c_str());
    return false;
}

} // namespace addrbook
