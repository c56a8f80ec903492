// Values of an entry's fields compared, field by field.
#pragma once

#include "data/fields.h"

// A value of its own in the editor: not the kind, which is always the same, and not a set.
bool IsPlainValue(const Field& field);

// Never of sets: an entry to write only borrows them.
bool HaveSameValue(const Field& field, const EntryToWrite& a, const EntryToWrite& b);

// Whether the record has what a save of the entry stores. A placeholder and an empty text are stored as none
// or as an empty one. Never of sets.
bool IsStoredValue(const Field& field, const JournalEntry& stored, const EntryToWrite& entry);
