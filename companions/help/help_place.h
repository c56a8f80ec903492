// Where a help file may lie. What asks for one is not always the journal: any program and any shortcut may
// name a file, and opening one on another computer would tell that computer the user's name and a proof of
// the password.
#pragma once

#include <string>
#include <string_view>

namespace help {

// Whether it is in the program's own folder or below it, wherever that is, or on a drive of this computer.
// False for a device, for another computer and for its drives that have a letter here. The file is not
// touched.
bool IsOwnOrLocal(const std::wstring& path, std::wstring_view program);

} // namespace help
