#include "export/value_text.h"

#include "data/journal_entry.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "util/date_text.h"
#include "util/duration_text.h"

namespace {

bool WriteDate(const FILETIME& time, PieceWriter& file)
{
    return file.Write(DateTimeText(TimeCount(time)));
}

bool WriteDuration(const FILETIME& duration, PieceWriter& file)
{
    return file.Write(FormatDuration(TimeCount(duration)));
}

void Note(StoreTrouble found, StoreTrouble* trouble)
{
    if (trouble && *trouble == StoreTrouble::None)
        *trouble = found;
}

template <typename Database>
bool WriteNames(const CEBLOB& blob, wchar_t separator, PieceWriter& file, StoreTrouble* trouble)
{
    Database database;
    wchar_t* names = nullptr;
    const int length = database.Open() ? database.SetStrFromBlob(blob, separator, &names) : 0;
    const LocalBlock<wchar_t> owner(names);
    Note(database.Trouble(), trouble);
    return !names || file.Write({names, static_cast<size_t>(length)});
}

} // namespace

bool WriteValue(const CEPROPVAL& property, PieceWriter& file, StoreTrouble* trouble)
{
    const CEVALUNION& value = property.val;
    switch (property.propid) {
    case kPropDate:
    case kPropEndTime: return WriteDate(value.filetime, file);
    case kPropSubject:
    case kPropBody:
    case kPropType: return !value.lpwstr || file.Write(value.lpwstr);
    case kPropCategories: return WriteNames<DbCategories>(value.blob, kCategorySeparator, file, trouble);
    case kPropPriority: return file.Write(PriorityWord(value.iVal));
    case kPropSensitivity: return file.Write(SensitivityWord(value.iVal));
    case kPropDuration: return WriteDuration(value.filetime, file);
    case kPropContacts: return WriteNames<DbContacts>(value.blob, kContactSeparator, file, trouble);
    default: return true;
    }
}
