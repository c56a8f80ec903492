#include "util/whole_file.h"

#include <windows.h>

#include "util/owners.h"

namespace {

UniqueKernelHandle OpenAt(const wchar_t* path, DWORD access, DWORD share, DWORD disposition)
{
    HANDLE file = CreateFileW(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

} // namespace

bool WriteWholeFile(const wchar_t* path, const std::string& bytes)
{
    const UniqueKernelHandle file = OpenAt(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    const auto size = static_cast<DWORD>(bytes.size());
    DWORD written = 0;
    return file && size == bytes.size() && WriteFile(file.get(), bytes.data(), size, &written, nullptr) &&
           written == size && FlushFileBuffers(file.get());
}

std::optional<std::string> ReadWholeFile(const wchar_t* path, uint64_t limit)
{
    const UniqueKernelHandle file = OpenAt(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.get(), &size) || static_cast<uint64_t>(size.QuadPart) > limit)
        return std::nullopt;
    std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ||
        read != bytes.size())
        return std::nullopt;
    return bytes;
}
