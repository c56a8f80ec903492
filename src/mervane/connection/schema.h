// The shape of the store's file: what marks it as ours, its tables, and the way from older versions to this
// one.
#pragma once

#include <string>
#include <vector>

#include "mervane/sqlite/sql_database.h"
#include "mervane/sqlite/store_header.h"

namespace mervane {

// Opens a store, creates one where there is no file or an empty one, and brings an older one up to date, of
// which a copy is kept in the folder of backups: without that it is refused. Log and journal beside it that
// are not its own are set aside, and told in *setAside. None when it is open; else nothing was touched, byte
// for byte, and what could not get its name back is told: the file is none of ours, only a newer program may
// use it, or it cannot be had.
[[nodiscard]] StoreTrouble OpenStoreFile(Database& database, const std::wstring& path,
                                         std::vector<RenamedFile>* setAside);

} // namespace mervane
