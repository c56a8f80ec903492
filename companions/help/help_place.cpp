#include "help/help_place.h"

#include <windows.h>

#include "help/help_request.h"
#include "help/page/ascii_text.h"

namespace help {

namespace {

// With all that leads upwards taken away. A device's name becomes the device's path. Empty when the system
// knows no such path.
std::wstring FullPath(const std::wstring& path)
{
    std::wstring full(kMaxRequest, L'\0');
    const DWORD size = GetFullPathNameW(path.c_str(), kMaxRequest, full.data(), nullptr);
    full.resize(size < kMaxRequest ? size : 0);
    return full;
}

bool IsOnLocalDrive(const std::wstring& full)
{
    if (full.size() < 3 || full[1] != L':' || full[2] != L'\\')
        return false;
    switch (GetDriveTypeW(full.substr(0, 3).c_str())) {
    case DRIVE_FIXED:
    case DRIVE_REMOVABLE:
    case DRIVE_CDROM:
    case DRIVE_RAMDISK: return true;
    default: return false;
    }
}

} // namespace

bool IsOwnOrLocal(const std::wstring& path, std::wstring_view program)
{
    const std::wstring full = FullPath(path);
    const std::wstring_view folder = program.substr(0, program.find_last_of(L'\\') + 1);
    const bool isOwn =
        !folder.empty() && InSmallLetters(full.substr(0, folder.size())) == InSmallLetters(folder);
    return isOwn || IsOnLocalDrive(full);
}

} // namespace help
