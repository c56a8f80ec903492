// The search that Find makes: from match to match until it has come round.
#pragma once

#include <vector>

#include "find/find_request.h"
#include "mervane/db_journal.h"

// The records found, in the order of finding. From Current the search begins behind the current entry, which
// need not match itself and is not found; where there is none (0, or one that is gone), at the top.
std::vector<CEOID> FindEntries(DbJournal& journal, const FindRequest& request, CEOID currentEntry);
