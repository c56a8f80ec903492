#include "support/test_drive.h"

#include <winioctl.h>

#include <cstring>
#include <vector>

#include "support/temporary_name.h"
#include "util/owners.h"

namespace {

constexpr wchar_t kLetter = L'n';
constexpr DWORD kDefineDrive = CTL_CODE(0x6D, 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);

// What Wine's mount manager takes; a drive of no root is removed.
struct UnixDrive {
    ULONG size;
    ULONG type;
    ULONG fileSystem;
    DWORD serial;
    ULONGLONG device;
    WCHAR letter;
    USHORT mountPointOffset;
    USHORT deviceOffset;
    USHORT labelOffset;
};

bool Define(UINT kind, const std::string& unixFolder)
{
    HANDLE manager = CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (manager == INVALID_HANDLE_VALUE)
        return false;
    const UniqueKernelHandle owner(manager);
    std::vector<char> input(sizeof(UnixDrive) + unixFolder.size() + 1);
    UnixDrive drive{};
    drive.size = static_cast<ULONG>(input.size());
    drive.type = kind;
    drive.letter = kLetter;
    drive.mountPointOffset = unixFolder.empty() ? 0 : sizeof drive;
    memcpy(input.data(), &drive, sizeof drive);
    memcpy(input.data() + sizeof drive, unixFolder.c_str(), unixFolder.size() + 1);
    DWORD size = 0;
    return DeviceIoControl(manager, kDefineDrive, input.data(), drive.size, nullptr, 0, &size, nullptr) !=
           FALSE;
}

std::string UnixName(const std::wstring& path)
{
    using Convert = char*(CDECL*)(const wchar_t*);
    const auto convert = reinterpret_cast<Convert>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (!convert)
        return {};
    char* name = convert(path.c_str());
    std::string copy = name ? name : "";
    HeapFree(GetProcessHeap(), 0, name);
    return copy;
}

} // namespace

std::wstring UnixPath(const std::wstring& path)
{
    const std::string name = UnixName(path);
    std::wstring wide(name.size() + 1, L'\0');
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, name.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    wide.resize(length ? static_cast<size_t>(length) - 1 : 0);
    return wide;
}

bool RunUnix(const std::wstring& command, const std::function<bool()>& isDone)
{
    std::wstring line = L"Z:\\bin\\" + command;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &started))
        return false;
    const UniqueKernelHandle process(started.hProcess), thread(started.hThread);
    for (const ULONGLONG end = GetTickCount64() + 20'000; !isDone() && GetTickCount64() < end;)
        Sleep(5);
    return isDone();
}

bool MoveUnix(const std::wstring& from, const std::wstring& to)
{
    const auto exists = [](const std::wstring& path) {
        return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    };
    return RunUnix(L"mv " + UnixPath(from) + L" " + UnixPath(to),
                   [&] { return exists(to) && !exists(from); });
}

TestDrive::TestDrive(UINT kind)
{
    m_folder = TemporaryName(L"journal-drive");
    m_there = CreateDirectoryW(m_folder.c_str(), nullptr) && Define(kind, UnixName(m_folder));
}

TestDrive::~TestDrive()
{
    Define(DRIVE_NO_ROOT_DIR, "");
    RemoveDirectoryW(m_folder.c_str());
}
