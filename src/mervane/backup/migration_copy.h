// The copy of a store that is made before it is brought up to date.
#pragma once

#include <cstdint>
#include <string>

#include "mervane/backup/store_copy.h"

namespace mervane {

// A copy of a store of an older version, made and checked at once; copy is to be named and kept.
[[nodiscard]] StoreTrouble CopyBeforeMigration(Database& store, const std::wstring& path, StoreCopy& copy);
// Its name there: none of an older copy.
std::wstring FreePathBeforeVersion(const std::wstring& storePath, int64_t version);

} // namespace mervane
