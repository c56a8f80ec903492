// The Find dialog: what to look for, in which field, and from where on.
#pragma once

#include "find/find_request.h"
#include "settings/registry_store.h"

// True when it was closed with OK: the request is what was chosen, and the choices are stored. Otherwise
// nothing has changed. hasCurrentEntry: whether there is an entry to search from.
bool RunFindDialog(HWND owner, RegistryStore& settings, bool hasCurrentEntry, FindRequest* request);
