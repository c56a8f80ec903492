// The Find command.
#pragma once

#include <windows.h>

#include "find/find_request.h"

class EntryList;

// Shows the Find dialog; on OK selects what is found in the list, as far as the list shows it, and shows all
// of it in the results. owner is the main window; request lasts from one find to the next.
void RunFind(HWND owner, EntryList& list, FindRequest* request);
