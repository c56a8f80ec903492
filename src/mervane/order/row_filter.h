// RowFilter: which records come first in an open database's rows.
#pragma once

#include <functional>

#include "mervane/values/ce_types.h"

struct RowFilter {
    CEPROPID property = 0;
    // Whether a record of this value passes; null: the record lacks the property. The value is borrowed for
    // the call. It is asked once for each record and again when the program writes to one, in the middle of
    // the database's own work: it answers from the value alone and calls no database.
    std::function<bool(const CEPROPVAL* value)> passes;
    // Records without any property pass in any case.
    bool emptyPasses = false;
};
