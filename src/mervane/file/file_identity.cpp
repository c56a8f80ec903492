#include "mervane/file/file_identity.h"

#include <winternl.h>

#include <cstring>

// Documented, but in the drivers' headers alone.
extern "C" NTSTATUS NTAPI NtQueryDirectoryFile(HANDLE folder, HANDLE event, PIO_APC_ROUTINE routine,
                                               void* context, IO_STATUS_BLOCK* status, void* entries,
                                               ULONG size, FILE_INFORMATION_CLASS kind, BOOLEAN onlyOne,
                                               UNICODE_STRING* name, BOOLEAN fromTheStart);

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

// What a folder says of a file in it.
struct Entry {
    FILE_ID_BOTH_DIRECTORY_INFORMATION facts;
    WCHAR restOfName[MAX_PATH];
};

bool ReadEntry(const std::wstring& path, Entry* entry)
{
    const size_t start = path.find_last_of(L"\\/") + 1;
    std::wstring name = path.substr(start);
    HANDLE folder = CreateFileW(path.substr(0, start).c_str(), FILE_LIST_DIRECTORY,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (folder == INVALID_HANDLE_VALUE)
        return false;
    const auto length = static_cast<USHORT>(name.size() * sizeof(WCHAR));
    UNICODE_STRING only{length, length, name.data()};
    IO_STATUS_BLOCK status;
    *entry = {};
    const NTSTATUS result =
        NtQueryDirectoryFile(folder, nullptr, nullptr, nullptr, &status, entry, sizeof *entry,
                             FileIdBothDirectoryInformation, TRUE, &only, TRUE);
    CloseHandle(folder);
    return result == 0 && !(entry->facts.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

// Told without opening the file, and without its volume's number. Under Wine each closed handle of a file
// with locks leaves a descriptor open until the locks are given back, and asking for the volume's number
// takes longer than a save. The folder of another volume, with a file of the same number, has other times for
// it. Some systems bring a folder's sizes and times up to date late; then this does not know.
bool IsPlainlySame(HANDLE file, const std::wstring& path)
{
    Entry entry;
    IO_STATUS_BLOCK status;
    FILE_INTERNAL_INFORMATION number{};
    FILE_BASIC_INFO times;
    FILE_STANDARD_INFO sizes;
    return ReadEntry(path, &entry) &&
           NtQueryInformationFile(file, &status, &number, sizeof number, FileInternalInformation) == 0 &&
           number.IndexNumber.QuadPart != 0 &&
           GetFileInformationByHandleEx(file, FileBasicInfo, &times, sizeof times) &&
           GetFileInformationByHandleEx(file, FileStandardInfo, &sizes, sizeof sizes) &&
           number.IndexNumber.QuadPart == entry.facts.FileId.QuadPart &&
           times.CreationTime.QuadPart == entry.facts.CreationTime.QuadPart &&
           times.LastWriteTime.QuadPart == entry.facts.LastWriteTime.QuadPart &&
           sizes.EndOfFile.QuadPart == entry.facts.EndOfFile.QuadPart;
}

bool IsSameFile(HANDLE one, HANDLE other)
{
    const std::optional<FILE_ID_INFO> first = IdentityOf(one), second = IdentityOf(other);
    return !first || (second && IsSame(*first, *second));
}

} // namespace

// Asked anew of both: a drive may number its files afresh while they are open.
StoreTrouble OpenedFile::Look() const
{
    if (IsPlainlySame(m_handle, m_path))
        return StoreTrouble::None;
    HANDLE file = CreateFileW(m_path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return StoreTrouble::Unreachable;
    const bool isSame = IsSameFile(m_handle, file);
    CloseHandle(file);
    return isSame ? StoreTrouble::None : StoreTrouble::OtherFile;
}

} // namespace mervane
