// The journal entry record: value words, and the way from a record's property array to a JournalEntry and
// back. fields.h has the table of the fields.
#pragma once

#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "mervane/values/journal_table.h"
#include "mervane/z_stack.h"
#include "util/time_count.h"

constexpr int kPropertyCount = static_cast<int>(std::size(mervane::kJournalProperties));

constexpr USHORT kEntryKind = 3;
constexpr wchar_t kCategorySeparator = L',';
constexpr wchar_t kContactSeparator = L';';
constexpr int kTypeTextSize = 60; // with the terminator

// Shown in empty controls and never stored. A text is a placeholder only as a whole.
constexpr const wchar_t* kBodyPlaceholder = L"<Entry Body>";
constexpr const wchar_t* kSubjectPlaceholder = L"<Entry Subject>";
// By CompareStringW, so the case matters.
bool IsPlaceholder(const std::wstring& text, const wchar_t* placeholder);

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
    USHORT kind = kEntryKind; // always
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
