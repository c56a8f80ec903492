// The Find Results dialog: the entries found, each of which can be opened.
#pragma once

#include <windows.h>

#include <vector>

#include "data/session.h"
#include "mervane/values/ce_types.h"

// Comes back when the dialog is closed. Entries may have been changed, or deleted by other programs,
// meanwhile.
void RunFindResults(const Session& session, HWND owner, const std::vector<CEOID>& found);
