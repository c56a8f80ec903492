// Whether a path still leads to the file that was opened.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "mervane/trouble.h"

namespace mervane {

class OpenedFile {
  public:
    OpenedFile() = default;
    // handle, of the file that the path led to, is borrowed and stays open as long as this is asked.
    OpenedFile(const std::wstring& path, HANDLE handle) : m_path(path), m_handle(handle) {}

    // None when the path leads to the same file, or the drive tells no file's identity; OtherFile for another
    // one; Unreachable when there is none.
    StoreTrouble Look() const;
    // The same, for those who ask again and again: where the path's size and times are as they were when it
    // last led to the same file, that is not opened. Under Wine each opening of a file that has locks costs a
    // descriptor until they are given back.
    StoreTrouble Glance();

  private:
    std::optional<WIN32_FILE_ATTRIBUTE_DATA> m_same; // when Glance last looked and it was the same file
    std::wstring m_path;
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

} // namespace mervane
