#include "data/journal_entry.h"

#include "data/fields.h"

namespace {

void Take(const CEVALUNION& value, std::optional<TimeCount>* out)
{
    *out = TimeCount(value.filetime);
}

void Take(const CEVALUNION& value, std::optional<std::wstring>* out)
{
    if (value.lpwstr)
        *out = value.lpwstr;
}

void Take(const CEVALUNION& value, std::optional<short>* out)
{
    *out = value.iVal;
}

void Take(const CEVALUNION& value, std::optional<USHORT>* out)
{
    *out = value.uiVal;
}

// A blob that claims bytes it does not have is none.
void Take(const CEVALUNION& value, std::optional<std::vector<BYTE>>* out)
{
    const CEBLOB& blob = value.blob;
    if (blob.lpb)
        out->emplace(blob.lpb, blob.lpb + blob.dwCount);
    else if (!blob.dwCount)
        out->emplace();
}

void Put(TimeCount time, const Field&, CEPROPVAL* property)
{
    property->val.filetime = time.ToFileTime();
}

void Put(short number, const Field&, CEPROPVAL* property)
{
    property->val.iVal = number;
}

void Put(USHORT number, const Field&, CEPROPVAL* property)
{
    property->val.uiVal = number;
}

// A text that is still the placeholder is deleted, with the empty text at the placeholder's end as its value.
void Put(std::wstring& text, const Field& field, CEPROPVAL* property)
{
    const bool isNone = field.placeholder && IsPlaceholder(text, field.placeholder);
    property->wFlags = isNone ? CEDB_PROPDELETE : WORD{0};
    property->val.lpwstr = text.data() + (isNone ? text.size() : 0);
}

void Put(const CEBLOB& blob, const Field&, CEPROPVAL* property)
{
    if (blob.dwCount && blob.lpb)
        property->val.blob = blob;
    else
        property->wFlags = CEDB_PROPDELETE;
}

CEPROPVAL PropertyOf(const Field& field, EntryToWrite& entry)
{
    CEPROPVAL property{};
    property.propid = field.id;
    std::visit([&](auto member) { Put(entry.*member, field, &property); }, field.written);
    return property;
}

// An empty set deletes what an existing record may hold; elsewhere there is nothing to send.
bool IsSent(const Field& field, const CEPROPVAL& property, const EntryToWrite& entry)
{
    const bool isEmptySet = PropertyType(field.id) == CEVT_BLOB && (property.wFlags & CEDB_PROPDELETE);
    return !isEmptySet || (entry.exists && (entry.loadedMask & field.emptyDeletes));
}

} // namespace

bool IsPlaceholder(const std::wstring& text, const wchar_t* placeholder)
{
    return CompareStringW(LOCALE_SYSTEM_DEFAULT, 0, text.data(), static_cast<int>(text.size()), placeholder,
                          -1) == CSTR_EQUAL;
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
        const Field* field = FieldOf(properties[i].propid);
        if (field && !(properties[i].wFlags & CEDB_PROPNOTFOUND))
            std::visit([&](auto member) { Take(properties[i].val, &(entry->*member)); }, field->read);
    }
}

std::vector<CEPROPVAL> PropertiesToWrite(EntryToWrite& entry)
{
    std::vector<CEPROPVAL> properties;
    for (const Field& field : Fields())
        if (const CEPROPVAL property = PropertyOf(field, entry); IsSent(field, property, entry))
            properties.push_back(property);
    return properties;
}
