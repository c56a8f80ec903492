// Where programs and system libraries are looked for: never in the current folder, which may be any.
#pragma once

#include <string>

// Makes the system look for a library that is named without a folder in its own folder only. At a program's
// start.
void UseLibrariesOfSystemOnly();

bool IsFile(const std::wstring& path);

// The full path of a program that is named without a folder, in the system's folders and those of PATH; empty
// when it is in none.
std::wstring FindInSystem(const std::wstring& name);

// The full path of the program at the beginning of a command line: in quotes, or, as in old registry entries,
// without quotes and up to a blank; empty when there is none. A path from the current folder counts as none.
std::wstring ProgramOfCommand(const std::wstring& command);
