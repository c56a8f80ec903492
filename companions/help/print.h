// Printing the help.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "help/page/help_document.h"
#include "help/page/print_layout.h"

namespace help {

// Asks for a printer and prints; what goes wrong is told in a box. Nothing when a person cancels.
void AskAndPrint(HWND owner, const std::wstring& title, const std::vector<Block>& blocks);

// The printed part of the device's page: all but three quarters of an inch around it.
PrintArea AreaOf(HDC dc);

enum class PrintEnd { Printed, Cancelled, Failed };

// Prints onto the device, a page for each that the text needs; into a file where one is given as output:
// "FILE:" asks for its name, and a person may cancel that.
PrintEnd PrintBlocks(HDC dc, const std::wstring& title, const std::vector<Block>& blocks,
                     const wchar_t* output = nullptr);

} // namespace help
