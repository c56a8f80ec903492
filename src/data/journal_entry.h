// The journal entry record: property identifiers, field names, value words, and the way from a record's
// property array to a JournalEntry and back.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mervane/values/ce_types.h"
#include "mervane/z_stack.h"
#include "util/time_count.h"

// Also the start of the activity; local wall-clock time.
constexpr CEPROPID kPropDate = MakePropertyId(101, CEVT_FILETIME);
constexpr CEPROPID kPropSubject = MakePropertyId(102, CEVT_LPWSTR);
constexpr CEPROPID kPropBody = MakePropertyId(103, CEVT_LPWSTR); // lines separated by CR LF
constexpr CEPROPID kPropCategories = MakePropertyId(104, CEVT_BLOB);
constexpr CEPROPID kPropType = MakePropertyId(105, CEVT_LPWSTR);
constexpr CEPROPID kPropKind = MakePropertyId(106, CEVT_UI2); // always written as 3
constexpr CEPROPID kPropPriority = MakePropertyId(107, CEVT_I2);
constexpr CEPROPID kPropSensitivity = MakePropertyId(108, CEVT_I2);
constexpr CEPROPID kPropEndTime = MakePropertyId(109, CEVT_FILETIME);
constexpr CEPROPID kPropDuration = MakePropertyId(110, CEVT_FILETIME); // the count of the length itself
constexpr CEPROPID kPropContacts = MakePropertyId(111, CEVT_BLOB);

constexpr int kPropertyCount = 11;

constexpr USHORT kEntryKind = 3;
constexpr wchar_t kCategorySeparator = L',';
constexpr wchar_t kContactSeparator = L';';
constexpr int kTypeTextSize = 60; // with the terminator

// Shown in empty controls and never stored. A text is a placeholder only as a whole.
constexpr const wchar_t* kBodyPlaceholder = L"<Entry Body>";
constexpr const wchar_t* kSubjectPlaceholder = L"<Entry Subject>";
// By CompareStringW, so the case matters.
bool IsPlaceholder(const std::wstring& text, const wchar_t* placeholder);

// The order in which the fields are named to the user: string ids 61300 to 61310.
enum class FieldId {
    Date,
    Subject,
    Type,
    Body,
    Categories,
    StartTime,
    EndTime,
    Duration,
    Contacts,
    Sensitivity,
    Priority
};
// The field of a property number; none for 106 and for numbers outside 101 to 111.
std::optional<FieldId> FieldOfProperty(WORD property);

constexpr short kPriorityLow = 0, kPriorityNormal = 1, kPriorityHigh = 2;
constexpr short kSensitivityNormal = 0, kSensitivityPersonal = 1, kSensitivityPrivate = 2,
                kSensitivityConfidential = 3;
const wchar_t* PriorityWord(int priority);       // any other value: "Normal"
const wchar_t* SensitivityWord(int sensitivity); // any other value: "Normal"

// The mask that the editor keeps of the properties it has loaded. Numbers OR-ed together, not single bits:
// the overlap is deliberate.
constexpr DWORD kLoadedSubject = 1;
constexpr DWORD kLoadedType = 2;
constexpr DWORD kLoadedCategories = 3;
constexpr DWORD kLoadedContacts = 4;
constexpr DWORD kLoadedBody = 5;
constexpr DWORD kLoadedPriority = 6;
constexpr DWORD kLoadedSensitivity = 7;
constexpr DWORD kMaskDeletesCategories = 0x3;
constexpr DWORD kMaskDeletesContacts = 0x4;

// The in-memory form of one record. A member without a value: the record lacks the property.
struct JournalEntry {
    CEOID id = 0; // 0: not yet written
    std::optional<TimeCount> date;
    std::optional<TimeCount> endTime;
    std::optional<TimeCount> duration;
    std::optional<short> priority;
    std::optional<short> sensitivity;
    std::optional<std::wstring> subject;
    std::optional<std::wstring> body;
    std::optional<std::wstring> type;
    std::optional<USHORT> kind;
    std::optional<std::vector<BYTE>> categories; // the blob as stored
    std::optional<std::vector<BYTE>> contacts;
};

// A record's property; null when the record lacks it: it is not there, or flagged CEDB_PROPNOTFOUND. Of one
// that comes twice the last one counts.
const CEPROPVAL* FindProperty(CEPROPID id, WORD count, const CEPROPVAL* properties);

// Fills an entry from a property array in whatever order; unknown identifiers, properties flagged
// CEDB_PROPNOTFOUND, null texts and blobs that claim bytes at a null address are passed over. Of a property
// that comes twice the last one counts. id is left alone; every other member is set anew.
void ReadEntry(const CEPROPVAL* properties, WORD count, JournalEntry* entry);

// The property array of a save, in its fixed order, with the texts and blobs it points into.
struct EntryToWrite {
    TimeCount date;
    TimeCount endTime;
    TimeCount duration;
    short priority = kPriorityNormal;
    short sensitivity = kSensitivityNormal;
    std::wstring type;
    std::wstring body;    // the placeholder: the property is deleted
    std::wstring subject; // likewise
    CEBLOB categories{};  // borrowed; dwCount 0: none assigned
    CEBLOB contacts{};    // borrowed; dwCount 0: none assigned
    bool exists = false;  // the record has been written before
    DWORD loadedMask = 0;
};
// The array points into entry, which must outlive it unchanged.
std::vector<CEPROPVAL> PropertiesToWrite(EntryToWrite& entry);
