#include "export/entry_text.h"

namespace {

constexpr const wchar_t* kBlockEnd = L"\r\n\r\n";

// A text property without a text counts as none.
const CEPROPVAL* FindShown(const ExportedRecord& entry, CEPROPID id)
{
    const CEPROPVAL* property = entry.Find(id);
    const bool hasNoText = property && PropertyType(id) == CEVT_LPWSTR && !property->val.lpwstr;
    return hasNoText ? nullptr : property;
}

bool WriteLine(const Field& field, const ExportedRecord& entry, bool withLabels, ValueTexts& texts,
               PieceWriter& file)
{
    const CEPROPVAL* property = FindShown(entry, field.id);
    if (!property && !field.line.isAlways)
        return true;
    if (withLabels && !file.Write(field.line.label))
        return false;
    return file.Write(property ? texts.Whole(field, property->val) : field.lacking) &&
           file.Write(field.line.end);
}

} // namespace

void WriteEntryText(const ExportedRecord& entry, bool withLabels, ValueTexts& texts, PieceWriter& file)
{
    for (int place = 1; const Field* field = FieldOfLine(place); ++place)
        if (!WriteLine(*field, entry, withLabels, texts, file))
            return;
    (void)file.Write(kBlockEnd);
}
