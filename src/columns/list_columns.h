// The columns of the list control, made from the column set.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "columns/column_set.h"

// The priority as an icon instead of a title: only as the first shown column.
bool IsPriorityIconColumn(const ZColumn& column, int position);

// The column of the control for a shown column at its position, as wide as it is stored. The title stays the
// ZColumn's: it is borrowed.
LVCOLUMNW HeaderColumn(const ZColumn& column, int position);

// Deletes every column of the control and inserts the shown ones. False as soon as an insertion fails.
bool InsertColumns(HWND list, const ColumnSet& columns);

// What a click on a shown column's header does to the set; returns the header image of the column. A column
// that cannot be sorted by stays as it is (-1).
int ClickColumn(ColumnSet* columns, int position);

// The sort that a column asks of the database: its property and direction. The body cannot be sorted by: the
// property stays that of the current sort.
SORTORDERSPEC SortOfColumn(const ZColumn& column, SORTORDERSPEC current);
