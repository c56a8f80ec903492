// Whether a record passes the filter.
#pragma once

#include "list/filter_state.h"

// 1: the record passes; 0: it is filtered out. Passes everything while the filter is not active, and a record
// without properties or, in date mode, without a date.
int PassesFilter(const FilterState& filter, WORD count, const CEPROPVAL* properties);
