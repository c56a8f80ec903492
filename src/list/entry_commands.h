// The commands that act on whole entries. owner is the main window. Deleting, pasting and taking categories
// away are done as a whole or not at all; where the store refuses, a box tells why and the selection stays.
#pragma once

#include <windows.h>

class EntryList;

void NewEntry(HWND owner, EntryList& list);
void EditEntry(HWND owner, EntryList& list);
void DeleteEntries(EntryList& list); // Cut is the same
void CopyEntries(EntryList& list);
void PasteEntries(EntryList& list);
// The master list of categories, in the device's dialog.
void EditCategories(HWND owner, EntryList& list);
// Which fields the list shows. The columns are saved and built anew after Cancel too; after OK the rows
// follow the sort that the dialog left.
void CustomizeListColumns(HWND owner, EntryList& list);
// Takes the categories from every entry, also from those that the filter hides, and sets all use counts to 0.
// Does not ask.
void ClearCategories(EntryList& list);
