#include "list/display_record.h"

#include <cwchar>

#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "util/date_text.h"
#include "util/duration_text.h"
#include "util/owners.h"
#include "util/text_cut.h"

namespace {

// At most max characters. Looks no further than it must.
std::wstring Bounded(const wchar_t* text, size_t max)
{
    return std::wstring(text ? CutText({text, wcsnlen(text, max + 1)}, max) : L"");
}

template <typename Database> std::wstring Names(const CEBLOB& blob, wchar_t separator)
{
    Database database;
    if (!database.Open())
        return {};
    wchar_t* joined = nullptr;
    database.SetStrFromBlob(blob, separator, &joined);
    const LocalBlock<wchar_t> owner(joined);
    return Bounded(joined, kShortTextMax);
}

void FormatProperty(const CEPROPVAL& property, DisplayRecord* record)
{
    const CEVALUNION& value = property.val;
    switch (property.propid) {
    case kPropDate: record->date = DateTimeText(TimeCount(value.filetime)); break;
    case kPropSubject: record->subject = Bounded(value.lpwstr, kWholeTextMax); break;
    case kPropBody: record->body = FirstLine(Bounded(value.lpwstr, kShortTextMax)); break;
    case kPropCategories: record->categories = Names<DbCategories>(value.blob, kCategorySeparator); break;
    case kPropType: record->type = Bounded(value.lpwstr, kWholeTextMax); break;
    case kPropPriority: record->image = record->priority = value.iVal; break;
    case kPropSensitivity: record->sensitivity = value.iVal; break;
    case kPropEndTime: record->time = DateTimeText(TimeCount(value.filetime)); break;
    case kPropDuration: record->duration = FormatDuration(TimeCount(value.filetime)); break;
    case kPropContacts: record->contacts = Names<DbContacts>(value.blob, kContactSeparator); break;
    default: break;
    }
}

} // namespace

DisplayRecord FormatRecord(CEOID id, WORD count, const CEPROPVAL* properties)
{
    DisplayRecord record;
    record.id = id;
    for (WORD i = 0; i < count; ++i)
        if (!(properties[i].wFlags & CEDB_PROPNOTFOUND))
            FormatProperty(properties[i], &record);
    if (record.duration.empty())
        record.duration = FormatDuration(TimeCount());
    if (record.time.empty())
        record.time = record.date;
    return record;
}

const wchar_t* CellText(const DisplayRecord& record, WORD property)
{
    if (!record.id)
        return L"";
    switch (property) {
    case PropertyNumber(kPropDate): return record.date.c_str();
    case PropertyNumber(kPropSubject): return record.subject.c_str();
    case PropertyNumber(kPropBody): return record.body.c_str();
    case PropertyNumber(kPropCategories): return record.categories.c_str();
    case PropertyNumber(kPropType): return record.type.c_str();
    case PropertyNumber(kPropPriority): return PriorityWord(record.priority);
    case PropertyNumber(kPropSensitivity): return SensitivityWord(record.sensitivity);
    case PropertyNumber(kPropEndTime): return record.time.c_str();
    case PropertyNumber(kPropDuration): return record.duration.c_str();
    case PropertyNumber(kPropContacts): return record.contacts.c_str();
    default: return L"";
    }
}

int CellImage(const DisplayRecord& record, WORD property)
{
    return property == PropertyNumber(kPropPriority) ? record.image : kImageBlank;
}

std::wstring FirstLine(const std::wstring& text)
{
    const size_t end = text.find(L'\r');
    return end == 0 ? text : text.substr(0, end);
}
