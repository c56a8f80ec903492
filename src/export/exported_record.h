// ExportedRecord: an entry as the journal gives it to export, whatever the order of its properties.
#pragma once

#include "data/journal_entry.h"

struct ExportedRecord {
    WORD count = 0;
    const CEPROPVAL* properties = nullptr; // borrowed

    const CEPROPVAL* Find(CEPROPID id) const { return FindProperty(id, count, properties); }
};
