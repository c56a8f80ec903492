#include "mervane/store_header.h"

#include <windows.h>

#include <array>
#include <cstring>

namespace mervane {

namespace {

constexpr size_t kHeaderSize = 100;
constexpr size_t kUserVersionOffset = 60;
constexpr size_t kApplicationIdOffset = 68;
using Header = std::array<BYTE, kHeaderSize>;

int32_t BigEndianAt(const Header& header, size_t offset)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value = value << 8 | header[offset + i];
    return static_cast<int32_t>(value);
}

bool IsStoreHeader(const Header& header)
{
    constexpr char kMagic[16] = "SQLite format 3";
    return memcmp(header.data(), kMagic, sizeof kMagic) == 0 &&
           MayUse({BigEndianAt(header, kApplicationIdOffset), BigEndianAt(header, kUserVersionOffset)});
}

FileKind KindOfContent(HANDLE file, bool readOnly)
{
    Header header{};
    DWORD read = 0;
    if (!ReadFile(file, header.data(), kHeaderSize, &read, nullptr))
        return FileKind::Foreign;
    if (read == 0 && !readOnly)
        return FileKind::Empty;
    if (read < kHeaderSize || !IsStoreHeader(header))
        return FileKind::Foreign;
    return readOnly ? FileKind::ReadOnlyStore : FileKind::Store;
}

} // namespace

bool MayUse(const StoreMarks& marks)
{
    return marks.applicationId == kApplicationId && SchemaVersionOf(marks.userVersion) >= 1 &&
           OldestProgramOf(marks.userVersion) >= 1 && OldestProgramOf(marks.userVersion) <= kSchemaVersion;
}

FileKind LookAtFile(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? FileKind::Missing
                                                                              : FileKind::Foreign;
    }
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
        return FileKind::Foreign;
    HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return FileKind::Foreign;
    const FileKind kind = KindOfContent(file, (attributes & FILE_ATTRIBUTE_READONLY) != 0);
    CloseHandle(file);
    return kind;
}

} // namespace mervane
