#include "list/display_record.h"

namespace {

void FillLacking(DisplayRecord* record)
{
    for (const Field& field : Fields()) {
        std::wstring& cell = record->cells[IndexOf(field)];
        if (!cell.empty())
            continue;
        const Field* other = FieldOf(field.lackingAs);
        cell = other ? record->cells[IndexOf(*other)] : field.lacking;
    }
}

} // namespace

std::vector<CEPROPID> ShownProperties(const ColumnSet& columns)
{
    std::vector<CEPROPID> properties;
    for (int i = 0; i < columns.shownCount; ++i) {
        const Field* field = FieldOfColumn(columns.columns[static_cast<size_t>(i)].Property());
        if (!field)
            continue;
        properties.push_back(field->id);
        if (field->lackingAs)
            properties.push_back(field->lackingAs);
    }
    return properties;
}

DisplayRecord FormatRecord(CEOID id, WORD count, const CEPROPVAL* properties, ValueTexts& texts)
{
    DisplayRecord record;
    record.id = id;
    for (WORD i = 0; i < count; ++i) {
        const Field* field = FieldOf(properties[i].propid);
        if (!field || (properties[i].wFlags & CEDB_PROPNOTFOUND))
            continue;
        record.cells[IndexOf(*field)] = texts.Cell(*field, properties[i].val);
        if (field->reading == Reading::Priority)
            record.image = properties[i].val.iVal;
    }
    FillLacking(&record);
    return record;
}

const wchar_t* CellText(const DisplayRecord& record, WORD property)
{
    const Field* field = record.id ? FieldOfColumn(property) : nullptr;
    return field ? record.cells[IndexOf(*field)].c_str() : L"";
}

int CellImage(const DisplayRecord& record, WORD property)
{
    return property == PropertyNumber(kPropPriority) ? record.image : kImageBlank;
}
