// At a start that has failed because the store cannot be opened: telling why, and offering a backup.
#pragma once

#include <string>

#include "mervane/trouble.h"

// Tells that the store at the path was not opened, and why. Where its file is broken and a backup is whole it
// asks whether that is to take its place, and says where the broken file is kept; No is the default answer.
// True when the backup is in its place: the store can be opened now. Else everything is as it was.
[[nodiscard]] bool TellUnopenedStore(const std::wstring& path, StoreTrouble trouble);
