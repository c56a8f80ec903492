// The record behind the editor: how it is read, what is remembered of what was read, and how it is written.
#pragma once

#include "data/journal_entry.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "mervane/z_stack.h"

// The numbers of the properties that an entry has, OR-ed together (see kLoadedSubject and the ones after it).
DWORD LoadedMask(const JournalEntry& entry);

class EditorRecord {
  public:
    // reference is the caller's: 0 for a new entry. It gets the identifier when a record is created.
    EditorRecord(DbJournal& journal, CEOID* reference)
        : m_journal(journal), m_reference(reference), m_id(*reference)
    {}

    // Opens the categories and contacts for the editor's lifetime. Without them the entry can still be
    // edited.
    void OpenStores(HWND owner);

    // Reads the record, its categories and its contacts. False, with entry untouched, for a new entry and for
    // a record that is gone; one that is there but cannot be read is left alone and saved as a new one.
    bool Load(JournalEntry* entry);

    enum class Saved {
        Failed,  // nothing was changed, neither in the store nor here
        Created, // a new record was written: it does not count as saved
        Updated,
    };
    // Writes the record with the categories and contacts kept here and empties the category stack. Categories
    // that were assigned or released since the editor opened have their use counts changed, with the record
    // or not at all.
    Saved Save(EntryToWrite* entry);

    DWORD Mask() const { return m_mask; }
    CEOID Id() const { return m_id; }
    // The record's subject as it is stored now; empty when it has none.
    const wchar_t* StoredSubject() { return m_journal.GetSubject(m_id); }

    ZStack& Categories() { return m_categories; }
    DbCategories& CategoryStore() { return m_categoryStore; }
    DbContacts& Contacts() { return m_contacts; }

  private:
    Saved CountUsesAndWrite(EntryToWrite* entry);
    void CountUses();
    Saved Write(EntryToWrite* entry, CEOID* written);

    DbJournal& m_journal;
    CEOID* m_reference;
    CEOID m_id;
    DWORD m_mask = 0;
    ZStack m_categories;
    DbCategories m_categoryStore;
    DbContacts m_contacts;
};
