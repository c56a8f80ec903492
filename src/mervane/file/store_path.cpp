#include "mervane/file/store_path.h"

#include <windows.h>

#include "mervane/file/drive_kind.h"

namespace mervane {

namespace {

std::wstring EnvironmentText(const wchar_t* name)
{
    std::wstring text(MAX_PATH, L'\0');
    DWORD length = GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size()));
    if (length >= text.size()) {
        text.resize(length);
        length = GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size()));
    }
    text.resize(length);
    return text;
}

std::wstring FullPath(const std::wstring& path)
{
    std::wstring full(MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length >= full.size()) {
        full.resize(length);
        length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    }
    full.resize(length);
    return full;
}

std::wstring FolderOf(const std::wstring& path)
{
    const size_t end = path.find_last_of(L"\\/");
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

// As people write it, where it is short enough for that.
std::wstring WithoutPrefix(const std::wstring& path)
{
    constexpr std::wstring_view kLong = L"\\\\?\\", kShare = L"\\\\?\\UNC\\";
    if (path.size() >= MAX_PATH || !path.starts_with(kLong))
        return path;
    return path.starts_with(kShare) ? L"\\\\" + path.substr(kShare.size()) : path.substr(kLong.size());
}

// Where the file or folder really is, beyond all links; empty when it is not there.
std::wstring FinalPath(const std::wstring& path)
{
    HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    std::wstring final(32'768, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file, final.data(), static_cast<DWORD>(final.size()),
                                                   FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    CloseHandle(file);
    final.resize(length < final.size() ? length : 0);
    return WithoutPrefix(final);
}

// A link itself, wherever it leads.
bool IsLink(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

// Of what is not there yet: where the nearest folder above it really is. None where a link on the way leads
// to what does not answer.
std::optional<std::wstring> FinalPathToBe(const std::wstring& path)
{
    if (IsLink(path))
        return std::nullopt;
    for (std::wstring folder = FolderOf(path); !folder.empty(); folder = FolderOf(folder)) {
        if (std::wstring final = FinalPath(folder + L"\\"); !final.empty())
            return (final.ends_with(L'\\') ? final.substr(0, final.size() - 1) : final) +
                   path.substr(folder.size());
        if (IsLink(folder))
            return std::nullopt;
    }
    return path;
}

// What SQLite puts beside the file must lie beside the file itself, not beside a link to it.
std::optional<std::wstring> WithoutLinks(const std::wstring& path)
{
    std::optional<std::wstring> final = FinalPath(path);
    if (final->empty())
        final = FinalPathToBe(path);
    // What is reached over a drive that may go stays a file of that drive, whatever it stands for.
    return !final || IsOnOwnDrive(path) || !IsOnOwnDrive(*final) ? final : path;
}

bool IsFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

std::wstring NamedStorePath()
{
    const std::wstring named = EnvironmentText(L"MERVANE_STORE");
    if (!named.empty())
        return FullPath(named);
    const std::wstring folder = DataFolder();
    return folder.empty() ? folder : FullPath(folder + L"\\journal.db");
}

// Followed once for each name: a link that comes to lead elsewhere or a share that is lost must not make a
// second store of the one that is open.
std::optional<std::wstring> FollowedStorePath()
{
    static std::wstring s_named;
    static std::optional<std::wstring> s_path;
    const std::wstring named = NamedStorePath();
    if (named != s_named || !s_path) {
        s_path = named.empty() ? named : WithoutLinks(named);
        s_named = named;
    }
    return s_path;
}

std::wstring StorePath()
{
    return FollowedStorePath().value_or(NamedStorePath());
}

std::wstring DataFolder()
{
    const std::wstring appData = EnvironmentText(L"APPDATA");
    return appData.empty() ? appData : appData + L"\\Quillmarsh\\Journal";
}

std::wstring PathKey(const std::wstring& path)
{
    std::wstring key = path;
    CharLowerBuffW(key.data(), static_cast<DWORD>(key.size()));
    return key;
}

// FNV-1a.
uint64_t StoreNumber(const std::wstring& path)
{
    uint64_t number = 0xCBF29CE484222325;
    for (const wchar_t unit : PathKey(path)) {
        number = (number ^ (unit & 0xFF)) * 0x100000001B3;
        number = (number ^ (unit >> 8)) * 0x100000001B3;
    }
    return number > 1 ? number : 2;
}

bool MakeFolderOf(const std::wstring& path)
{
    const std::wstring folder = FolderOf(path);
    if (folder.empty() || IsFolder(folder))
        return true;
    return MakeFolderOf(folder) && (CreateDirectoryW(folder.c_str(), nullptr) || IsFolder(folder));
}

} // namespace mervane
