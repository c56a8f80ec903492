#include "help/help_file.h"

#include <windows.h>

#include "help/page/page_text.h"
#include "util/owners.h"

namespace help {

namespace {

UniqueKernelHandle OpenForReading(const std::wstring& path)
{
    HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    return UniqueKernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

bool IsMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
           error == ERROR_BAD_PATHNAME || error == ERROR_INVALID_DRIVE;
}

bool ReadBytes(HANDLE file, std::string& bytes)
{
    size_t read = 0;
    while (read < bytes.size()) {
        DWORD part = 0;
        if (!ReadFile(file, bytes.data() + read, static_cast<DWORD>(bytes.size() - read), &part, nullptr))
            return false;
        if (part == 0)
            break;
        read += part;
    }
    bytes.resize(read);
    return true;
}

} // namespace

HelpFile ReadHelpFile(const std::wstring& path)
{
    const UniqueKernelHandle file = OpenForReading(path);
    if (!file)
        return {IsMissing(GetLastError()) ? FileState::Missing : FileState::Unreadable, {}};
    LARGE_INTEGER size{};
    if (GetFileType(file.get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.get(), &size))
        return {FileState::Unreadable, {}};
    if (size.QuadPart > static_cast<LONGLONG>(kMaxHelpFile))
        return {FileState::TooLarge, {}};
    std::string bytes(static_cast<size_t>(size.QuadPart), '\0');
    if (!ReadBytes(file.get(), bytes))
        return {FileState::Unreadable, {}};
    if (!IsText(bytes))
        return {FileState::NoText, {}};
    return {FileState::Read, DecodeText(bytes)};
}

} // namespace help
