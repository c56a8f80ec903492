// The shape of the store's file: what marks it as ours, its tables, and the way from older versions to this
// one.
#pragma once

#include <string>
#include <vector>

#include "mervane/sqlite/sql_database.h"
#include "mervane/sqlite/store_header.h"

namespace mervane {

// Opens a store. Creates one where there is no file or an empty one. Brings an older one up to date and keeps
// a copy of it in the folder of backups: without that it is refused. Log and journal beside it that are not
// its own are set aside, and told in *setAside. None when it is open; else nothing was touched, byte for
// byte, and what could not get its name back is told: the file is not ours, is for newer programs only, or
// cannot be read.
[[nodiscard]] StoreTrouble OpenStoreFile(Database& database, const std::wstring& path,
                                         std::vector<RenamedFile>* setAside);

} // namespace mervane
