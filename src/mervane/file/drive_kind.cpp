#include "mervane/file/drive_kind.h"

#include <optional>

namespace mervane {

namespace {

// With a backslash at its end; empty when there is none.
std::wstring VolumeOf(const std::wstring& path)
{
    std::wstring root(path.size() + MAX_PATH, L'\0');
    if (!GetVolumePathNameW(path.c_str(), root.data(), static_cast<DWORD>(root.size())))
        return {};
    root.resize(wcslen(root.c_str()));
    return root;
}

UINT KindOf(const std::wstring& volume)
{
    return volume.empty() ? DRIVE_UNKNOWN : GetDriveTypeW(volume.c_str());
}

// Opened for no access, which needs no rights: what is asked then is only what the device is.
HANDLE OpenDevice(const std::wstring& volume)
{
    wchar_t name[MAX_PATH];
    if (!GetVolumeNameForVolumeMountPointW(volume.c_str(), name, MAX_PATH))
        return INVALID_HANDLE_VALUE;
    name[wcslen(name) - 1] = L'\0';
    return CreateFileW(name, 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
}

std::optional<STORAGE_DEVICE_DESCRIPTOR> DescriptionOf(const std::wstring& volume)
{
    HANDLE device = OpenDevice(volume);
    if (device == INVALID_HANDLE_VALUE)
        return std::nullopt;
    STORAGE_PROPERTY_QUERY query{};
    query.PropertyId = StorageDeviceProperty;
    query.QueryType = PropertyStandardQuery;
    // Names, which nobody asks for, follow it.
    STORAGE_DEVICE_DESCRIPTOR description{};
    DWORD size = 0;
    const BOOL isTold = DeviceIoControl(device, IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query,
                                        &description, sizeof description, &size, nullptr);
    CloseHandle(device);
    if (!isTold || size < offsetof(STORAGE_DEVICE_DESCRIPTOR, RawPropertiesLength))
        return std::nullopt;
    return description;
}

} // namespace

bool IsOnOwnDrive(const std::wstring& path)
{
    const UINT kind = KindOf(VolumeOf(path));
    return kind == DRIVE_FIXED || kind == DRIVE_RAMDISK;
}

// To the system a hard disk at a cable is as fixed as one that is built in.
bool IsOnFixedDrive(const std::wstring& path)
{
    const std::wstring volume = VolumeOf(path);
    const UINT kind = KindOf(volume);
    if (kind != DRIVE_FIXED)
        return kind == DRIVE_RAMDISK;
    const std::optional<STORAGE_DEVICE_DESCRIPTOR> description = DescriptionOf(volume);
    return description && IsBuiltIn(*description);
}

bool IsBuiltIn(const STORAGE_DEVICE_DESCRIPTOR& device)
{
    if (device.RemovableMedia)
        return false;
    switch (device.BusType) {
    case BusTypeScsi:
    case BusTypeAtapi:
    case BusTypeAta:
    case BusTypeFibre:
    case BusTypeRAID:
    case BusTypeSas:
    case BusTypeSata:
    case BusTypeMmc:
    case BusTypeVirtual:
    case BusTypeSpaces:
    case BusTypeNvme:
    case BusTypeSCM:
    case BusTypeUfs: return true;
    // At a cable, in a slot, over a network, in a file that may be anywhere, or not known.
    default: return false;
    }
}

} // namespace mervane
