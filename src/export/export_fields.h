// Which columns of the list go into a comma-separated export.
#pragma once

#include <string>
#include <vector>

#include "columns/column_set.h"

bool IsExportable(const ZColumn& column);      // it may be offered as a field
bool IsChosenForExport(const ZColumn& column); // it is one, and it is to be written

// Chooses every exportable column; their titles, in the order of the columns.
std::vector<std::wstring> ChooseAllFields(ColumnSet* columns);
// Of the titles that ChooseAllFields has given, those with true are chosen, the others not.
void ChooseFields(const std::vector<bool>& chosen, ColumnSet* columns);
