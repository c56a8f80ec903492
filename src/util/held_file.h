// Files that another program holds for a moment, as a virus scanner, a backup or an indexer does with each
// that is new.
#pragma once

#include <functional>
#include <string>

// Whether the system's error at a file says that somebody holds it, so that it may be gone in a moment.
[[nodiscard]] bool IsHeld(const std::wstring& path, unsigned long error);

// Does the work, and does it again while it fails because somebody holds the file at path, which it is to
// open, replace, rename or delete: for two seconds in all, with the hourglass, on this thread. The work tells
// whether it was done; where it was not, the system's last error is its own.
[[nodiscard]] bool DoWhileHeld(const std::wstring& path, const std::function<bool()>& work);

// By DeleteFileW and MoveFileExW; false as they are.
bool DeleteHeldFile(const std::wstring& path);
[[nodiscard]] bool MoveHeldFile(const std::wstring& from, const std::wstring& to, unsigned long flags);
