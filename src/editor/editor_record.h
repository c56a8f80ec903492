// The record behind the editor: reading it, remembering what was read, and writing it.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "data/journal_entry.h"
#include "data/rescue_state.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "mervane/z_stack.h"
#include "util/owners.h"

// The numbers of the properties that an entry has, OR-ed together (see kLoadedSubject and the ones after it).
DWORD LoadedMask(const JournalEntry& entry);

// Whatever the order.
bool IsSameSet(std::vector<CEOID> a, std::vector<CEOID> b);

class EditorRecord {
  public:
    // reference is the caller's: 0 for a new entry. It gets the identifier when a record is created.
    EditorRecord(DbJournal& journal, CEOID* reference) : m_journal(journal), m_reference(reference)
    {
        m_known.id = *reference;
    }

    // Opens the categories and contacts for the editor's lifetime. Without them the entry can still be
    // edited.
    void OpenStores(HWND owner);

    enum class Loaded {
        Nothing, // a new entry, or a record that is gone
        Done,
        Failed, // the record may be there: it is neither opened nor written over
    };
    // Reads the record, its categories and its contacts. entry is untouched unless that is done.
    [[nodiscard]] Loaded Load(JournalEntry* entry);
    // Behind Load: how the entry is shown while nobody has edited it. A value that cannot be read whole stays
    // in the record, byte for byte, unless its field was edited.
    void SetShown(EntryToWrite shown) { m_shown = std::move(shown); }

    enum class Saved {
        Failed,  // nothing was changed, neither in the store nor here; see Trouble
        Changed, // the same: the record is not any more what was loaded or saved here last
        Created, // a new record was written: it does not count as saved
        Updated,
    };
    // What to do with a record that somebody else has changed. Replace means the record as it was at the last
    // answer Changed: where it is another one again, that is the answer once more.
    enum class Theirs { Ask, Replace };
    // Writes the record with the categories and contacts kept here and empties the category stack. Categories
    // that were assigned or released since the editor opened have their use counts changed, with the record
    // or not at all. A record that is gone is written anew. A set whose blob has a wrong shape stays as it is
    // in the record, all its bytes, until it is changed here.
    [[nodiscard]] Saved Save(EntryToWrite* entry, Theirs theirs = Theirs::Ask);
    // Writes a new record and leaves the one that was loaded as it is, with its categories and their uses:
    // those of the new one, also what earlier saves have written, are counted besides. From then on this is
    // the new one; where it fails all is as it was.
    [[nodiscard]] Saved SaveAsNew(EntryToWrite* entry);
    // Behind a save: puts what it has written back into the stack, for one more that is the same save to the
    // person.
    void AddWritten();

    // The part of a rescue that the record has: which one it is, what it was, and the assigned sets. Of a
    // record that was saved here the categories are those that it has.
    void DescribeTo(RescueState* state) const;
    // Behind Load: takes over the assigned sets of an entry that was being edited when the program ended.
    // Where the record is not any more what it was then, it counts as changed by somebody else.
    void GoOnWith(const RescueState& state);

    // Why the last load or save failed.
    StoreTrouble Trouble() const { return m_trouble; }

    DWORD Mask() const { return m_mask; }
    CEOID Id() const { return m_known.id; }
    // The record's subject as it is stored now; nothing when it has none. The one that was loaded where the
    // store cannot be read.
    std::optional<std::wstring> StoredSubject();

    ZStack& Categories() { return m_categories; }
    DbCategories& CategoryStore() { return m_categoryStore; }
    DbContacts& Contacts() { return m_contacts; }

  private:
    // A record as it is stored, all of it; for comparing.
    using Image = std::vector<BYTE>;
    enum class Target { Failed, Changed, New, Record };
    // What is known of the record in the store. A save that fails leaves it as it was.
    struct Known {
        CEOID id = 0;                  // 0: it is not written yet
        std::optional<Image> image;    // as it was loaded or saved last; none: not known
        std::vector<CEPROPID> foreign; // that stand in it in a form that cannot be read whole
        // Of a set whose blob has a wrong shape, or is none: what was read of it.
        std::optional<std::vector<CEOID>> partOfCategories;
        std::optional<std::vector<CEOID>> partOfContacts;
    };

    Saved CountUsesAndWrite(EntryToWrite* entry, Theirs theirs);
    Saved FindAndWrite(EntryToWrite* entry, Theirs theirs);
    Saved WriteTo(Target target, EntryToWrite* entry);
    Target FindTarget(Theirs theirs);
    void LoadSets(JournalEntry* entry);
    bool LeavesCategories() const;
    bool LeavesContacts() const;
    void LeaveUnreadSets(EntryToWrite* entry) const;
    bool IsForeign(CEPROPID property) const;
    void LeaveForeign(const EntryToWrite& entry, std::vector<CEPROPVAL>* properties);
    bool LeavesForeign(CEPROPID property, const EntryToWrite& entry) const;
    [[nodiscard]] bool CountUses();
    [[nodiscard]] bool FillBlobs(EntryToWrite* entry, LocalBlock<BYTE>* categories,
                                 LocalBlock<BYTE>* contacts);
    std::optional<Image> ReadImage();
    Saved Fail(StoreTrouble trouble);
    std::optional<std::wstring> ReadSubject();
    uint64_t ImageNumber() const;
    void AssignOnly(const std::vector<CEOID>& categories);

    DbJournal& m_journal;
    CEOID* m_reference;
    Known m_known;
    DWORD m_mask = 0;
    bool m_unread = false;         // the record is there, or may be, and was not loaded
    std::optional<Image> m_theirs; // of the record as it was when it was found changed last
    std::optional<EntryToWrite> m_shown;
    std::optional<std::wstring> m_subject; // that was loaded
    bool m_isBesides = false; // a new record beside the one that was loaded: the mask is not of it
    // The categories that the last save here wrote, which has emptied the stack; none: there was no save.
    std::optional<std::vector<CEOID>> m_written;
    StoreTrouble m_trouble = StoreTrouble::None;
    ZStack m_categories;
    DbCategories m_categoryStore;
    DbContacts m_contacts;
};
