// DisplayRecord: one row of the list as it is painted, formatted once when it enters the cache.
#pragma once

#include <string>

#include "data/journal_entry.h"

constexpr int kImageNone = -1; // the record has no priority
constexpr int kImageBlank = 3; // of the list's images, behind those of the three priorities

// Texts are bounded so that no record, whatever it holds, makes a page dear.
constexpr size_t kShortTextMax = 119;  // body, categories, contacts
constexpr size_t kWholeTextMax = 4095; // subject, type: shown whole, and no column is wider in pixels

// As it stands: a blank row.
struct DisplayRecord {
    CEOID id = 0;
    UINT state = 0; // list item state bits to add
    int image = kImageNone;
    int priority = kPriorityNormal;
    int sensitivity = kSensitivityNormal;
    std::wstring date;
    std::wstring time; // the end of the activity; a record without one repeats the date
    std::wstring duration;
    std::wstring subject;
    std::wstring type;
    std::wstring body; // its first line
    std::wstring categories;
    std::wstring contacts;
};

// Formats a record's properties, in whatever order they come. Unknown ones, those flagged CEDB_PROPNOTFOUND
// and null texts are passed over. The names in categories and contacts are looked up in their databases.
DisplayRecord FormatRecord(CEOID id, WORD count, const CEPROPVAL* properties);

// What a column that shows the property paints for the record. The text is owned by the record; empty for a
// blank row and for a property that has no column.
const wchar_t* CellText(const DisplayRecord& record, WORD property);
int CellImage(const DisplayRecord& record, WORD property);

// The text up to its first CR; all of it when it starts with one or has none.
std::wstring FirstLine(const std::wstring& text);
