#include "export/export_fields.h"

bool IsExportable(const ZColumn& column)
{
    return !column.Has(kColumnNeverOffered);
}

bool IsChosenForExport(const ZColumn& column)
{
    return IsExportable(column) && column.Has(kColumnExport);
}

std::vector<std::wstring> ChooseAllFields(ColumnSet* columns)
{
    std::vector<std::wstring> titles;
    for (ZColumn& column : columns->columns) {
        if (!IsExportable(column))
            continue;
        column.Add(kColumnExport);
        titles.push_back(column.Title());
    }
    return titles;
}

void ChooseFields(const std::vector<bool>& chosen, ColumnSet* columns)
{
    size_t field = 0;
    for (ZColumn& column : columns->columns) {
        if (!IsExportable(column))
            continue;
        if (field < chosen.size() && chosen[field])
            column.Add(kColumnExport);
        else
            column.Remove(kColumnExport);
        ++field;
    }
}
