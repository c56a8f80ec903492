#include "mervane/file_identity.h"

#include <cstring>

namespace mervane {

namespace {

std::optional<FILE_ID_INFO> IdentityOf(HANDLE file)
{
    FILE_ID_INFO identity{};
    if (GetFileInformationByHandleEx(file, FileIdInfo, &identity, sizeof identity))
        return identity;
    // Older file systems have a shorter one.
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(file, &information))
        return std::nullopt;
    identity.VolumeSerialNumber = information.dwVolumeSerialNumber;
    memcpy(&identity.FileId.Identifier[0], &information.nFileIndexLow, sizeof(DWORD));
    memcpy(&identity.FileId.Identifier[4], &information.nFileIndexHigh, sizeof(DWORD));
    return identity;
}

bool IsSame(const FILE_ID_INFO& one, const FILE_ID_INFO& other)
{
    return one.VolumeSerialNumber == other.VolumeSerialNumber &&
           memcmp(&one.FileId, &other.FileId, sizeof one.FileId) == 0;
}

} // namespace

StoreTrouble OpenedFile::Look() const
{
    // Asked anew of both: a drive may number its files afresh while they are open.
    const std::optional<FILE_ID_INFO> opened = IdentityOf(m_handle);
    if (!opened)
        return StoreTrouble::None;
    HANDLE file = CreateFileW(m_path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return StoreTrouble::Unreachable;
    const std::optional<FILE_ID_INFO> found = IdentityOf(file);
    CloseHandle(file);
    return found && IsSame(*opened, *found) ? StoreTrouble::None : StoreTrouble::OtherFile;
}

} // namespace mervane
