#include "export/export_fields.h"

namespace {

constexpr CEPROPID kFields[] = {kPropDate,     kPropSubject,  kPropBody,        kPropCategories,
                                kPropType,     kPropPriority, kPropSensitivity, kPropEndTime,
                                kPropDuration, kPropContacts};

} // namespace

bool IsExportable(const ZColumn& column)
{
    return !column.Has(kColumnNeverOffered);
}

bool IsChosenForExport(const ZColumn& column)
{
    return IsExportable(column) && column.Has(kColumnExport);
}

CEPROPID ColumnProperty(const ZColumn& column)
{
    for (const CEPROPID id : kFields)
        if (PropertyNumber(id) == column.Property())
            return id;
    return 0;
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
