#include "mervane/drive_kind.h"

#include <windows.h>

namespace mervane {

bool IsOnFixedDrive(const std::wstring& path)
{
    std::wstring root(path.size() + MAX_PATH, L'\0');
    if (!GetVolumePathNameW(path.c_str(), root.data(), static_cast<DWORD>(root.size())))
        return false;
    const UINT kind = GetDriveTypeW(root.c_str());
    return kind == DRIVE_FIXED || kind == DRIVE_RAMDISK;
}

} // namespace mervane
