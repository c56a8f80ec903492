// Whether what a rescue file has is in the store.
#pragma once

#include "data/rescue_state.h"
#include "mervane/db_journal.h"

// True where nothing of it is unsaved: its record has all of it, or another record has that the save must
// have written in its place, as that of a new entry. False also where it cannot be told. Reads the dates of
// the journal at most once, and the records of one day.
[[nodiscard]] bool IsStored(DbJournal& journal, const RescueState& state);
