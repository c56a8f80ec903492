#include "data/journal_entry.h"

namespace {

void ReadText(const wchar_t* text, std::optional<std::wstring>* out)
{
    if (text)
        *out = text;
}

// A blob that claims bytes it does not have is none.
void ReadBlob(const CEBLOB& blob, std::optional<std::vector<BYTE>>* out)
{
    if (blob.lpb)
        out->emplace(blob.lpb, blob.lpb + blob.dwCount);
    else if (!blob.dwCount)
        out->emplace();
}

void ReadProperty(const CEPROPVAL& property, JournalEntry* entry)
{
    const CEVALUNION& value = property.val;
    switch (property.propid) {
    case kPropDate: entry->date = TimeCount(value.filetime); break;
    case kPropSubject: ReadText(value.lpwstr, &entry->subject); break;
    case kPropBody: ReadText(value.lpwstr, &entry->body); break;
    case kPropCategories: ReadBlob(value.blob, &entry->categories); break;
    case kPropType: ReadText(value.lpwstr, &entry->type); break;
    case kPropKind: entry->kind = value.uiVal; break;
    case kPropPriority: entry->priority = value.iVal; break;
    case kPropSensitivity: entry->sensitivity = value.iVal; break;
    case kPropEndTime: entry->endTime = TimeCount(value.filetime); break;
    case kPropDuration: entry->duration = TimeCount(value.filetime); break;
    case kPropContacts: ReadBlob(value.blob, &entry->contacts); break;
    default: break;
    }
}

CEPROPVAL Property(CEPROPID id, WORD flags = 0)
{
    CEPROPVAL property{};
    property.propid = id;
    property.wFlags = flags;
    return property;
}

CEPROPVAL TimeProperty(CEPROPID id, TimeCount time)
{
    CEPROPVAL property = Property(id);
    property.val.filetime = time.ToFileTime();
    return property;
}

CEPROPVAL ShortProperty(CEPROPID id, short value)
{
    CEPROPVAL property = Property(id);
    property.val.iVal = value;
    return property;
}

CEPROPVAL TextProperty(CEPROPID id, std::wstring& text)
{
    CEPROPVAL property = Property(id);
    property.val.lpwstr = text.data();
    return property;
}

// A text that is still the placeholder is deleted, with the empty text at the placeholder's end as its value.
CEPROPVAL TypedTextProperty(CEPROPID id, std::wstring& text, const wchar_t* placeholder)
{
    if (!IsPlaceholder(text, placeholder))
        return TextProperty(id, text);
    CEPROPVAL property = Property(id, CEDB_PROPDELETE);
    property.val.lpwstr = text.data() + text.size();
    return property;
}

// What is assigned is written. An empty set deletes what an existing record may hold.
void AddAssigned(CEPROPID id, const CEBLOB& blob, bool mayHold, std::vector<CEPROPVAL>* properties)
{
    if (blob.dwCount && blob.lpb) {
        properties->push_back(Property(id));
        properties->back().val.blob = blob;
    } else if (mayHold) {
        properties->push_back(Property(id, CEDB_PROPDELETE));
    }
}

} // namespace

bool IsPlaceholder(const std::wstring& text, const wchar_t* placeholder)
{
    return CompareStringW(LOCALE_SYSTEM_DEFAULT, 0, text.data(), static_cast<int>(text.size()), placeholder,
                          -1) == CSTR_EQUAL;
}

std::optional<FieldId> FieldOfProperty(WORD property)
{
    switch (property) {
    case PropertyNumber(kPropDate): return FieldId::Date;
    case PropertyNumber(kPropSubject): return FieldId::Subject;
    case PropertyNumber(kPropBody): return FieldId::Body;
    case PropertyNumber(kPropCategories): return FieldId::Categories;
    case PropertyNumber(kPropType): return FieldId::Type;
    case PropertyNumber(kPropPriority): return FieldId::Priority;
    case PropertyNumber(kPropSensitivity): return FieldId::Sensitivity;
    case PropertyNumber(kPropEndTime): return FieldId::EndTime;
    case PropertyNumber(kPropDuration): return FieldId::Duration;
    case PropertyNumber(kPropContacts): return FieldId::Contacts;
    default: return std::nullopt;
    }
}

const wchar_t* PriorityWord(int priority)
{
    switch (priority) {
    case kPriorityLow: return L"Low";
    case kPriorityHigh: return L"High";
    default: return L"Normal";
    }
}

const wchar_t* SensitivityWord(int sensitivity)
{
    switch (sensitivity) {
    case kSensitivityPersonal: return L"Personal";
    case kSensitivityPrivate: return L"Private";
    case kSensitivityConfidential: return L"Confidential";
    default: return L"Normal";
    }
}

const CEPROPVAL* FindProperty(CEPROPID id, WORD count, const CEPROPVAL* properties)
{
    for (WORD i = count; i-- > 0;)
        if (properties[i].propid == id && !(properties[i].wFlags & CEDB_PROPNOTFOUND))
            return &properties[i];
    return nullptr;
}

void ReadEntry(const CEPROPVAL* properties, WORD count, JournalEntry* entry)
{
    const CEOID id = entry->id;
    *entry = {};
    entry->id = id;
    for (WORD i = 0; properties && i < count; ++i) {
        if (!(properties[i].wFlags & CEDB_PROPNOTFOUND))
            ReadProperty(properties[i], entry);
    }
}

std::vector<CEPROPVAL> PropertiesToWrite(EntryToWrite& entry)
{
    CEPROPVAL kind = Property(kPropKind);
    kind.val.uiVal = kEntryKind;
    std::vector<CEPROPVAL> properties{
        kind,
        TimeProperty(kPropDate, entry.date),
        TimeProperty(kPropEndTime, entry.endTime),
        TimeProperty(kPropDuration, entry.duration),
        ShortProperty(kPropPriority, entry.priority),
        ShortProperty(kPropSensitivity, entry.sensitivity),
        TextProperty(kPropType, entry.type),
        TypedTextProperty(kPropBody, entry.body, kBodyPlaceholder),
        TypedTextProperty(kPropSubject, entry.subject, kSubjectPlaceholder),
    };
    AddAssigned(kPropCategories, entry.categories,
                entry.exists && (entry.loadedMask & kMaskDeletesCategories), &properties);
    AddAssigned(kPropContacts, entry.contacts, entry.exists && (entry.loadedMask & kMaskDeletesContacts),
                &properties);
    return properties;
}
