#include "util/whole_file.h"

#include <windows.h>

#include "util/held_file.h"
#include "util/owners.h"

namespace {

UniqueKernelHandle OpenAt(const wchar_t* path, DWORD access, DWORD share, DWORD disposition)
{
    HANDLE file = CreateFileW(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// A file that was not there; its name is empty when it cannot be made.
UniqueKernelHandle MakeBeside(const std::wstring& path, std::wstring* name)
{
    constexpr int kMostNames = 100;
    for (int number = 1; number <= kMostNames; ++number) {
        *name = path + L".new" + (number > 1 ? std::to_wstring(number) : std::wstring());
        if (auto file = OpenAt(name->c_str(), GENERIC_WRITE, 0, CREATE_NEW))
            return file;
        if (GetLastError() != ERROR_FILE_EXISTS)
            break;
    }
    name->clear();
    return nullptr;
}

// The file is closed afterwards: an open one cannot be moved.
bool WriteAll(UniqueKernelHandle file, const std::string& bytes)
{
    const auto size = static_cast<DWORD>(bytes.size());
    DWORD written = 0;
    return file && size == bytes.size() && WriteFile(file.get(), bytes.data(), size, &written, nullptr) &&
           written == size && FlushFileBuffers(file.get());
}

} // namespace

bool ReplaceWholeFile(const std::wstring& path, const std::string& bytes)
{
    std::wstring beside;
    if (!WriteAll(MakeBeside(path, &beside), bytes)) {
        if (!beside.empty())
            DeleteHeldFile(beside);
        return false;
    }
    if (MoveHeldFile(beside, path, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    DeleteHeldFile(beside);
    return false;
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
