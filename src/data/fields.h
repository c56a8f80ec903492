// The one table of an entry's fields: what a record, a list, an export and a sort do with each of them. A
// field's identifier and the store's column for it stand in mervane/values/journal_table.h.
#pragma once

#include <span>
#include <variant>

#include "data/journal_entry.h"

// How a value reads, for a person.
enum class Reading {
    Nothing,
    DateAndTime,
    Duration,
    Text,     // a cell shows it whole
    LongText, // a cell shows its beginning, of the first line
    Priority,
    Sensitivity,
    Categories,
    Contacts
};

template <typename Type> using InEntry = std::optional<Type> JournalEntry::*;
using ReadMember = std::variant<InEntry<TimeCount>, InEntry<std::wstring>, InEntry<short>, InEntry<USHORT>,
                                InEntry<std::vector<BYTE>>>;
using WrittenMember = std::variant<TimeCount EntryToWrite::*, std::wstring EntryToWrite::*,
                                   short EntryToWrite::*, USHORT EntryToWrite::*, CEBLOB EntryToWrite::*>;

// A column of the list before anybody has changed it.
struct DefaultColumn {
    int thirds = 0; // of the work area's right edge
    int width = 0;  // otherwise: pixels at 96 dpi
    DWORD flags = 0;
};

// A line of the text format.
struct TextLine {
    int place = 0; // from 1, without a gap; 0: it has none
    const wchar_t* label = L"";
    const wchar_t* end = L"\r\n";
    bool isAlways = false; // also for an entry that lacks the property: with what it reads as then
};

struct Field {
    CEPROPID id = 0;
    UINT title = 0; // a string of the resources; 0: the field is never named, and no column shows it
    Reading reading = Reading::Nothing;
    ReadMember read = {};
    WrittenMember written = {};
    const wchar_t* placeholder = nullptr; // a text that is this one is deleted in place of being stored
    DWORD emptyDeletes = 0;       // an empty set deletes what a record with one of these masks may hold
    bool sorts = true;            // the journal can be sorted by it
    const wchar_t* lacking = L""; // what a record without a text for it reads as ...
    CEPROPID lackingAs = 0;       // ... or this property's text
    DefaultColumn column = {};
    TextLine line = {};
    int findButton = 0; // of the dialog Find: looks for a date, or in a text; 0: it is not looked for
};

// In the order in which a save writes them.
std::span<const Field> Fields();
size_t IndexOf(const Field& field); // in Fields()
// null: no field has this identifier.
const Field* FieldOf(CEPROPID id);
// The field that a column of a property number shows; null for 106 and for numbers that no field has.
const Field* FieldOfColumn(WORD number);
const Field* FieldOfLine(int place);        // of the text format; null behind the last one
const Field* FieldOfFindButton(int button); // null for any other number

// Its name, of at most 59 characters; empty where it is never named.
std::wstring TitleOf(const Field& field);
