// The shape of the store's file: what marks it as ours, its tables, and the way from older versions to this
// one.
#pragma once

#include <string>

#include "mervane/sql_database.h"

namespace mervane {

// Opens a store, creates one where there is no file or an empty one, and brings an older one up to date. A
// file that is none of ours, or that only a newer program may use, is refused and stays byte for byte as it
// was; so is a write-ahead log without the file it belongs to.
[[nodiscard]] bool OpenStoreFile(Database& database, const std::wstring& path);

} // namespace mervane
