// The entry editor: the modal window in which one journal entry is created or changed.
#pragma once

#include <windows.h>

#include "data/session.h"
#include "editor/rescue_file.h"
#include "mervane/values/ce_types.h"

// Runs the editor over template 139 and the owner. *id is the record to
// open, 0 for a new entry; when a new record is written its identifier is stored there. Returns 1 when it was
// closed with OK, 0 after Cancel. A record that cannot be read is not opened: a box says so, and the result
// is 0. The caller refreshes its list.
int OpenEntryEditor(const Session& session, HWND owner, CEOID* id);

// The same over what was being edited when a program ended. The file is removed when that is saved or given
// up; otherwise it stays. *id gets the record that was edited, as OpenEntryEditor has it.
int OpenRescuedEntry(const Session& session, HWND owner, RescueFile file, RescueState state, CEOID* id);
