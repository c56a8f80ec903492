// Work on a journal that several figures are about, as the list, Find or export do it.
#pragma once

#include <cstdint>

#include "mervane/ce_dbase.h"

namespace bench {

constexpr uint32_t kPageRows = 50;

// Reads the page of 50 rows from a row on, each record with all its properties; ends the program when a row
// is missing.
void ReadPage(CeDBase& journal, uint32_t row);
// Reads every record in the order of the sort; returns how many there are.
uint32_t WalkAll(CeDBase& journal);
// Sorts by a property and asks for the first and the last row, so that the order is there.
void SortBy(CeDBase& journal, CEPROPID property, DWORD flags = 0);

} // namespace bench
