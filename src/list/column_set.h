// ColumnSet: which fields the list shows, in which order, how wide, and which one it is sorted by. The shown
// columns stand first, in display order.
#pragma once

#include <array>

#include "app/registry_store.h"
#include "data/journal_entry.h"
#include "mervane/z_column.h"

struct ColumnSet {
    std::array<ZColumn, kPropertyCount> columns;
    int shownCount = 0;
};

// The defaults for a work area whose right edge is at the given pixel.
void ResetColumns(ColumnSet* set, int workAreaRight);
// The defaults, then the stored columns over them. Any stored value is taken as it stands; an unknown property
// is skipped.
void LoadColumns(ColumnSet* set, const RegistryStore& settings, int workAreaRight);
// Writes all eleven positions, each deleted first, and the shown count.
void SaveColumns(const ColumnSet& set, RegistryStore& settings);

int FindColumnByProperty(const ColumnSet& set, WORD property);     // -1: none
int FindColumnByTitle(const ColumnSet& set, const wchar_t* title); // -1: none
int FindSortColumn(const ColumnSet& set);                          // the first with the sort mark; -1: none
// Moves a column to another position, past its neighbours one at a time.
void MoveColumn(ColumnSet* set, int from, int to);
