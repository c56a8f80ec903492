#include "mervane/file_identity.h"

#include <winternl.h>

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

// All that a file system says of a file without being asked about its volume, which under Wine takes half a
// millisecond, longer than a save.
struct Facts {
    FILE_INTERNAL_INFORMATION number;
    FILE_BASIC_INFO times;
    FILE_STANDARD_INFO sizes;
};

bool Read(HANDLE file, Facts* facts)
{
    IO_STATUS_BLOCK status;
    *facts = {};
    return NtQueryInformationFile(file, &status, &facts->number, sizeof facts->number,
                                  FileInternalInformation) == 0 &&
           facts->number.IndexNumber.QuadPart != 0 &&
           GetFileInformationByHandleEx(file, FileBasicInfo, &facts->times, sizeof facts->times) &&
           GetFileInformationByHandleEx(file, FileStandardInfo, &facts->sizes, sizeof facts->sizes);
}

// Another volume's file with the same number has other times. Where they differ somebody may have written
// meanwhile.
bool IsPlainlySame(HANDLE one, HANDLE other)
{
    Facts first, second;
    return Read(one, &first) && Read(other, &second) &&
           first.number.IndexNumber.QuadPart == second.number.IndexNumber.QuadPart &&
           first.times.CreationTime.QuadPart == second.times.CreationTime.QuadPart &&
           first.times.LastWriteTime.QuadPart == second.times.LastWriteTime.QuadPart &&
           first.sizes.EndOfFile.QuadPart == second.sizes.EndOfFile.QuadPart;
}

bool IsSameFile(HANDLE one, HANDLE other)
{
    if (IsPlainlySame(one, other))
        return true;
    const std::optional<FILE_ID_INFO> first = IdentityOf(one), second = IdentityOf(other);
    return !first || (second && IsSame(*first, *second));
}

} // namespace

// Asked anew of both: a drive may number its files afresh while they are open.
StoreTrouble OpenedFile::Look() const
{
    HANDLE file = CreateFileW(m_path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return StoreTrouble::Unreachable;
    const bool isSame = IsSameFile(m_handle, file);
    CloseHandle(file);
    return isSame ? StoreTrouble::None : StoreTrouble::OtherFile;
}

StoreTrouble OpenedFile::Glance()
{
    WIN32_FILE_ATTRIBUTE_DATA now;
    const bool isThere = GetFileAttributesExW(m_path.c_str(), GetFileExInfoStandard, &now) != 0;
    if (isThere && m_same && CompareFileTime(&now.ftCreationTime, &m_same->ftCreationTime) == 0 &&
        CompareFileTime(&now.ftLastWriteTime, &m_same->ftLastWriteTime) == 0 &&
        now.nFileSizeHigh == m_same->nFileSizeHigh && now.nFileSizeLow == m_same->nFileSizeLow)
        return StoreTrouble::None;
    const StoreTrouble trouble = Look();
    m_same.reset();
    if (isThere && trouble == StoreTrouble::None)
        m_same = now;
    return trouble;
}

} // namespace mervane
