// ExportedRecord: an entry as the journal gives it to export, whatever the order of its properties.
#pragma once

#include "data/journal_entry.h"

struct ExportedRecord {
    WORD count = 0;
    const CEPROPVAL* properties = nullptr; // borrowed

    // Null when the record lacks the property: it is not there, or flagged CEDB_PROPNOTFOUND. Of one that
    // comes twice the last one counts.
    const CEPROPVAL* Find(CEPROPID id) const;
};
