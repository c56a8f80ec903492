// Where the store is.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mervane {

// The full path that MERVANE_STORE names, else of journal.db in DataFolder; empty when there is neither.
std::wstring NamedStorePath();
// Where the file of that name is: links on the way are followed, once in this process for each name. None as
// long as one leads to what does not answer: nobody knows then which file it is. Of one thread.
std::optional<std::wstring> FollowedStorePath();
// The same, or that name itself where it cannot be followed: what the store is called then.
std::wstring StorePath();
// Quillmarsh\Journal in the user's application data; empty when there is none. It may have to be made.
std::wstring DataFolder();
// Two paths with the same key are the same file.
std::wstring PathKey(const std::wstring& path);
// A number for the store at a path, above 1: programs that find the same number have the same store. It is
// the same before the file is made and afterwards.
uint64_t StoreNumber(const std::wstring& path);
// Makes the folders above the file.
[[nodiscard]] bool MakeFolderOf(const std::wstring& path);

} // namespace mervane
