// The files that lie beside a store's file, a log or a journal, before SQLite takes them for the store's.
#pragma once

#include <string>

#include "mervane/store_header.h"
#include "mervane/trouble.h"

namespace mervane {

bool FileExists(const std::wstring& path);
// Whether the file is there and not empty.
bool HasContent(const std::wstring& path);

// Sets aside what does not belong to the file, under a name that says so and when; nothing is ever deleted.
// Answers None when the file can be opened with what then lies beside it. Else nothing was touched: the
// file is none of ours, or it cannot be told whether what lies beside it is the file's.
[[nodiscard]] StoreTrouble PrepareNeighbours(const std::wstring& path, const FileLook& file);

} // namespace mervane
