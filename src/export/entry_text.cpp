#include "export/entry_text.h"

#include "export/value_text.h"

namespace {

constexpr const wchar_t* kLineEnd = L"\r\n";
constexpr const wchar_t* kBlockEnd = L"\r\n\r\n";
constexpr const wchar_t* kDefaultWord = L"Normal"; // of priority and sensitivity alike

struct Line {
    CEPROPID property;
    const wchar_t* label;
    const wchar_t* end;
    const wchar_t* otherwise; // for an entry that lacks the property; null: no line
};

// The type is followed by a blank line, the subject is not.
constexpr Line kLines[] = {
    {kPropDate, L"Date: ", kLineEnd, nullptr},
    {kPropEndTime, L"End Date: ", kLineEnd, nullptr},
    {kPropDuration, L"Duration: ", kLineEnd, nullptr},
    {kPropPriority, L"Priority: ", kLineEnd, kDefaultWord},
    {kPropSensitivity, L"Sensitivity: ", kLineEnd, kDefaultWord},
    {kPropSubject, L"Subject: ", kLineEnd, nullptr},
    {kPropType, L"Type: ", kBlockEnd, nullptr},
    {kPropBody, L"Entry:\r\n", kBlockEnd, nullptr},
    {kPropCategories, L"Assigned Categories:\r\n", kLineEnd, nullptr},
    {kPropContacts, L"Assigned Contacts:\r\n", kLineEnd, nullptr},
};

// A text property without a text counts as none.
const CEPROPVAL* FindShown(const ExportedRecord& entry, CEPROPID id)
{
    const CEPROPVAL* property = entry.Find(id);
    const bool hasNoText = property && PropertyType(id) == CEVT_LPWSTR && !property->val.lpwstr;
    return hasNoText ? nullptr : property;
}

bool WriteLine(const Line& line, const ExportedRecord& entry, bool withLabels, PieceWriter& file,
               StoreTrouble* trouble)
{
    const CEPROPVAL* property = FindShown(entry, line.property);
    if (!property && !line.otherwise)
        return true;
    if (withLabels && !file.Write(line.label))
        return false;
    const bool hasValue = property ? WriteValue(*property, file, trouble) : file.Write(line.otherwise);
    return hasValue && file.Write(line.end);
}

} // namespace

void WriteEntryText(const ExportedRecord& entry, bool withLabels, PieceWriter& file, StoreTrouble* trouble)
{
    for (const Line& line : kLines)
        if (!WriteLine(line, entry, withLabels, file, trouble))
            return;
    (void)file.Write(kBlockEnd);
}
