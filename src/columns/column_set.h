// ColumnSet: which fields the list shows, in which order, how wide, and which one it is sorted by. The shown
// columns stand first, in display order.
#pragma once

#include <array>

#include "data/journal_entry.h"
#include "mervane/z_column.h"
#include "settings/registry_store.h"

struct ColumnSet {
    std::array<ZColumn, kPropertyCount> columns;
    int shownCount = 0;
};

// The defaults for a work area whose right edge is at the given pixel of the screen.
void ResetColumns(ColumnSet* set, int workAreaRight);
// The defaults, then the stored columns over them. The stored count may be anything: there is a
// position for each property, and those beyond are not read. A stored word is taken as it stands, with the
// shown mark. Skipped are words of an unknown property and of 106, which no column shows; the next one closes
// the gap. Of several words of one property the last one counts, flags and place. So the shown columns stand
// first and shownCount is their number. Where none is left the defaults stand: a list without columns shows
// no entry at all.
void LoadColumns(ColumnSet* set, const RegistryStore& settings, int workAreaRight);
// Writes all positions, each deleted first, and the shown count.
void SaveColumns(const ColumnSet& set, RegistryStore& settings);

int FindColumnByProperty(const ColumnSet& set, WORD property);     // -1: none
int FindColumnByTitle(const ColumnSet& set, const wchar_t* title); // -1: none, also for the empty title
int GetSortColumn(const ColumnSet& set);                           // the first with the sort mark; -1: none
// Moves a column to another position, past its neighbours one at a time. A position that is none moves
// nothing.
void MoveColumn(ColumnSet* set, int from, int to);
