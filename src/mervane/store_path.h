// Where the store is.
#pragma once

#include <string>

namespace mervane {

// The full path that MERVANE_STORE names, else Quillmarsh\Journal\journal.db in the user's application data;
// empty when there is neither.
std::wstring StorePath();
// Two paths with the same key are the same file.
std::wstring PathKey(const std::wstring& path);
// Makes the folders above the file.
[[nodiscard]] bool MakeFolderOf(const std::wstring& path);

} // namespace mervane
