#include "mervane/file/file_reader.h"

namespace mervane {

FileReader::FileReader(const std::wstring& path)
    : m_file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                         nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)),
      m_hasFailed(!IsOpen() && !IsMissing(GetLastError()))
{}

FileReader::~FileReader()
{
    if (IsOpen())
        CloseHandle(m_file);
}

uint64_t FileReader::Size() const
{
    LARGE_INTEGER size{};
    return IsOpen() && Succeeds(GetFileSizeEx(m_file, &size)) ? static_cast<uint64_t>(size.QuadPart) : 0;
}

DWORD FileReader::NameCount() const
{
    BY_HANDLE_FILE_INFORMATION information;
    return IsOpen() && GetFileInformationByHandle(m_file, &information) ? information.nNumberOfLinks : 0;
}

bool FileReader::IsOnReadOnlyVolume() const
{
    DWORD flags = 0;
    return IsOpen() &&
           GetVolumeInformationByHandleW(m_file, nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) &&
           (flags & FILE_READ_ONLY_VOLUME);
}

bool FileReader::Read(uint64_t offset, std::span<BYTE> bytes) const
{
    LARGE_INTEGER place{};
    place.QuadPart = static_cast<LONGLONG>(offset);
    DWORD read = 0;
    return IsOpen() && Succeeds(SetFilePointerEx(m_file, place, nullptr, FILE_BEGIN)) &&
           Succeeds(ReadFile(m_file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) &&
           read == bytes.size();
}

uint32_t BigEndianAt(std::span<const BYTE> bytes, size_t offset)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value = value << 8 | bytes[offset + i];
    return value;
}

} // namespace mervane
