#include "export/csv_rows.h"

#include "export/export_fields.h"

namespace {

constexpr const wchar_t* kRowStart = L"\"";
constexpr const wchar_t* kSeparator = L"\",\"";
constexpr const wchar_t* kRowEnd = L"\"\r\n";

// write(column) writes what stands in a chosen column's field.
void WriteFields(const ColumnSet& columns, PieceWriter& file, const auto& write)
{
    const wchar_t* before = kRowStart;
    for (const ZColumn& column : columns.columns) {
        if (!IsChosenForExport(column))
            continue;
        (void)file.Write(before);
        before = kSeparator;
        write(column);
    }
}

} // namespace

void WriteHeaderRow(const ColumnSet& columns, PieceWriter& file)
{
    WriteFields(columns, file, [&](const ZColumn& column) { (void)file.Write(column.Title()); });
    (void)file.Write(kRowEnd);
}

void WriteEntryRow(const ColumnSet& columns, const ExportedRecord& entry, ValueTexts& texts,
                   PieceWriter& file)
{
    bool hasAny = false;
    WriteFields(columns, file, [&](const ZColumn& column) {
        const Field* field = FieldOfColumn(column.Property());
        const CEPROPVAL* property = field ? entry.Find(field->id) : nullptr;
        if (!property)
            return;
        hasAny = true;
        (void)file.Write(texts.Whole(*field, property->val));
    });
    if (hasAny)
        (void)file.Write(kRowEnd);
}
