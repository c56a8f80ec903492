#include "util/held_file.h"

#include <windows.h>

#include <optional>

#include "util/wait_cursor.h"

namespace {

constexpr DWORD kStep = 50; // milliseconds
constexpr int kMostSteps = 40;

} // namespace

// Access is denied to a file that somebody holds, and to one that somebody has deleted and still holds; but
// also, for good, to a folder and to a file that is only to be read.
bool IsHeld(const std::wstring& path, DWORD error)
{
    if (error != ERROR_ACCESS_DENIED)
        return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES
               ? GetLastError() == ERROR_ACCESS_DENIED
               : !(attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY));
}

bool DoWhileHeld(const std::wstring& path, const std::function<bool()>& work)
{
    bool isDone = work();
    DWORD error = GetLastError();
    {
        std::optional<WaitCursor> cursor; // from the first wait on
        for (int step = 0; !isDone && step < kMostSteps && IsHeld(path, error); ++step) {
            if (!cursor)
                cursor.emplace();
            Sleep(kStep);
            isDone = work();
            error = GetLastError();
        }
    }
    SetLastError(error);
    return isDone;
}

bool DeleteHeldFile(const std::wstring& path)
{
    return DoWhileHeld(path, [&] { return DeleteFileW(path.c_str()) != FALSE; });
}

bool MoveHeldFile(const std::wstring& from, const std::wstring& to, DWORD flags)
{
    return DoWhileHeld(to, [&] { return MoveFileExW(from.c_str(), to.c_str(), flags) != FALSE; });
}
