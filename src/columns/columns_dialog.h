// The Customize Columns dialog (template 137): which fields the list shows, and in which order.
#pragma once

#include <windows.h>

#include "columns/column_set.h"

// Runs the dialog over the owner. True after OK, with the choice in *set; otherwise *set is as it was. Saving
// it and building the list's columns anew is the caller's, whatever the outcome.
bool CustomizeColumns(HWND owner, ColumnSet* set);
