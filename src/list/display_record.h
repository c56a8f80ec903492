// DisplayRecord: one row of the list as it is painted, formatted once when it enters the cache.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "columns/column_set.h"
#include "data/value_texts.h"

constexpr int kImageNone = -1; // the record has no priority
constexpr int kImageBlank = 3; // of the list's images, behind those of the three priorities

// As it stands: a blank row.
struct DisplayRecord {
    CEOID id = 0;
    UINT state = 0; // list item state bits to add
    int image = kImageNone;
    std::array<std::wstring, kPropertyCount> cells; // of each field
};

// What a row of the shown columns is made of. A body may be long, and is in few lists.
std::vector<CEPROPID> ShownProperties(const ColumnSet& columns);

// Formats a record's properties, in whatever order they come. Unknown ones, those flagged CEDB_PROPNOTFOUND
// and null texts are passed over.
DisplayRecord FormatRecord(CEOID id, WORD count, const CEPROPVAL* properties, ValueTexts& texts);

// What a column that shows the property paints for the record. The text is owned by the record; empty for a
// blank row and for a property that has no column.
const wchar_t* CellText(const DisplayRecord& record, WORD property);
int CellImage(const DisplayRecord& record, WORD property);
