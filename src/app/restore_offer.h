// At a start whose store cannot be opened, or is gone: telling it, and offering a backup.
#pragma once

#include <string>
#include <vector>

#include "mervane/file/trouble.h"

// Tells that the store at the path was not opened, why, and what was set aside beside it. Where its file is
// broken and a backup is whole it asks whether that is to take its place, and says where the broken file is
// kept; No is the default answer. True when the backup is in its place, or another file that has come there
// meanwhile: the store can be opened now. Else everything is as it was.
[[nodiscard]] bool TellUnopenedStore(const std::wstring& path, StoreTrouble trouble,
                                     const std::vector<RenamedFile>& setAside = {});

// Where the store at the path is gone, or an empty file is in its place, and it has backups: asks whether the
// newest whole one is to take its place, Yes being the default answer; where none is whole, whether to begin
// a new store. True when the start goes on, over the backup, over a new store, or since there is nothing to
// ask; false where the person answered No to a new store, and where the backups could not be read or the
// backup not be put in place, which a box has said.
[[nodiscard]] bool OfferBackupOfGoneStore(const std::wstring& path);
