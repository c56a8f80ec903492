// What is offered at the start: entries that were open and not saved when a program ended.
#pragma once

#include <windows.h>

#include "list/entry_list.h"

// Asks about each one of this store, the oldest first, unless all of it is stored: that one goes, quietly.
// Yes opens it in the editor, and the list shows what became of it; No sets its file aside. Without an
// answer, as when the session ends, all stays as it is.
void OfferRescues(HWND owner, EntryList& list);
