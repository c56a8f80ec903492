// At a start whose store cannot be opened, or is gone: telling it, and offering a backup.
#pragma once

#include <string>

#include "mervane/trouble.h"

// Tells that the store at the path was not opened, and why. Where its file is broken and a backup is whole it
// asks whether that is to take its place, and says where the broken file is kept; No is the default answer.
// True when the backup is in its place, or another file that has come there meanwhile: the store can be
// opened now. Else everything is as it was.
[[nodiscard]] bool TellUnopenedStore(const std::wstring& path, StoreTrouble trouble);

// Where the store at the path is gone, or an empty file is in its place, and a backup is whole: asks whether
// that is to take its place, Yes being the default answer. True when the start goes on, over the backup, over
// a new store with No, or since there is nothing to ask; false when the backup could not be put in its place,
// which has been told.
[[nodiscard]] bool OfferBackupOfGoneStore(const std::wstring& path);
