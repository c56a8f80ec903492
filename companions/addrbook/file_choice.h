// Asks for a vCard file.
#pragma once

#include <windows.h>

#include <string>

namespace addrbook {

// The path; empty when none was chosen.
std::wstring ChooseFileToOpen(HWND owner);
std::wstring ChooseFileToSave(HWND owner);

} // namespace addrbook
