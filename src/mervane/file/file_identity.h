// Whether a path still leads to the file that was opened.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "mervane/file/trouble.h"

namespace mervane {

class OpenedFile {
  public:
    OpenedFile() = default;
    // handle, of the file that the path led to, is borrowed and stays open as long as this is asked.
    OpenedFile(const std::wstring& path, HANDLE handle) : m_path(path), m_handle(handle) {}

    // None when the path leads to the same file, or the drive tells no file's identity; OtherFile for another
    // one; Unreachable when there is none.
    StoreTrouble Look() const;

  private:
    std::wstring m_path;
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

} // namespace mervane
