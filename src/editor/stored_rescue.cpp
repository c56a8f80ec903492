#include "editor/stored_rescue.h"

#include <algorithm>

#include "data/same_value.h"
#include "editor/editor_record.h"

namespace {

enum class Record {
    Gone, // or none yet
    Unknown,
    AsLoaded, // nobody has saved anything in its place
    Same,
    Other
};

bool IsSameEntry(const JournalEntry& stored, const EntryToWrite& entry)
{
    return std::ranges::all_of(Fields(), [&](const Field& field) {
        return !IsPlainValue(field) || IsStoredValue(field, stored, entry);
    });
}

bool HasSameSets(const RescueState& stored, const RescueState& state)
{
    return IsSameSet(stored.contacts, state.contacts) &&
           (!state.categories ||
            IsSameSet(stored.categories.value_or(std::vector<CEOID>()), *state.categories));
}

Record Look(DbJournal& journal, CEOID id, const RescueState& state)
{
    EditorRecord record(journal, &id);
    JournalEntry entry;
    switch (record.Load(&entry)) {
    case EditorRecord::Loaded::Nothing: return Record::Gone;
    case EditorRecord::Loaded::Failed: return Record::Unknown;
    default: break;
    }
    RescueState stored;
    record.DescribeTo(&stored);
    if (IsSameEntry(entry, state.entry) && HasSameSets(stored, state))
        return Record::Same;
    return stored.image == state.image ? Record::AsLoaded : Record::Other;
}

bool IsInAnother(DbJournal& journal, const RescueState& state)
{
    const FILETIME day = state.entry.date.ToFileTime();
    const CEOID first = journal.FindDate(kPropDate, day);
    for (CEOID id = first; id;) {
        if (Look(journal, id, state) == Record::Same)
            return true;
        id = journal.FindDateAfter(id, kPropDate, day);
        if (id == first)
            break;
    }
    return false;
}

} // namespace

bool IsStored(DbJournal& journal, const RescueState& state)
{
    const CeDBase::ReadScope scope(journal);
    switch (Look(journal, state.id, state)) {
    case Record::Same: return true;
    case Record::Gone:
    case Record::Other: return IsInAnother(journal, state);
    default: return false;
    }
}
