// The export command: the file, the dialog, the writing.
#pragma once

#include <windows.h>

#include "list/entry_list.h"

// Asks for a file and a format, then runs the Export dialog. Returns when it has closed; nothing happens when
// no file was chosen. owner is the main window.
void ExportEntries(HWND owner, EntryList& list);
