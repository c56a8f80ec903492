#include "mervane/sqlite/file_growth.h"

#include <windows.h>
#include <sqlite3.h>

#include <algorithm>
#include <iterator>

namespace mervane {

namespace {

constexpr char kZeros[32768] = {};

bool MoveTo(HANDLE file, LONGLONG place)
{
    LARGE_INTEGER distance{};
    distance.QuadPart = place;
    return SetFilePointerEx(file, distance, nullptr, FILE_BEGIN) != FALSE;
}

bool WriteZeros(HANDLE file, LONGLONG count)
{
    while (count > 0) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min<LONGLONG>(count, std::size(kZeros)));
        if (!WriteFile(file, kZeros, size, &written, nullptr))
            return false;
        if (written != size) {
            SetLastError(ERROR_DISK_FULL);
            return false;
        }
        count -= size;
    }
    return true;
}

// Stands in for SetEndOfFile: the file's new end is where its pointer stands.
BOOL WINAPI SetWrittenEnd(HANDLE file)
{
    LARGE_INTEGER end{}, size{};
    if (!SetFilePointerEx(file, {}, &end, FILE_CURRENT) || !GetFileSizeEx(file, &size))
        return FALSE;
    if (end.QuadPart <= size.QuadPart)
        return SetEndOfFile(file);
    return MoveTo(file, size.QuadPart) && WriteZeros(file, end.QuadPart - size.QuadPart);
}

} // namespace

void GrowFilesByWriting()
{
    if (sqlite3_initialize() != SQLITE_OK)
        return;
    if (sqlite3_vfs* system = sqlite3_vfs_find("win32"))
        system->xSetSystemCall(system, "SetEndOfFile", reinterpret_cast<sqlite3_syscall_ptr>(SetWrittenEnd));
}

} // namespace mervane
