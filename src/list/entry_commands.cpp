#include "list/entry_commands.h"

#include <algorithm>
#include <optional>
#include <set>
#include <vector>

#include "columns/columns_dialog.h"
#include "editor/editor_settings.h"
#include "editor/entry_editor.h"
#include "list/entry_list.h"
#include "list/not_done_box.h"
#include "mervane/db_categories.h"
#include "pick/z_cats_dlg.h"
#include "ui/ownerless_box.h"
#include "util/owners.h"

namespace {

bool IsDeletionConfirmed(const RegistryStore& settings)
{
    if (!ConfirmsDeletions(settings))
        return true;
    return ShowOwnerlessBox(L"Delete record?", L"Confirm", MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

// The record that is open may be written anew, under another identifier, when another program deletes it
// meanwhile.
void OpenEditorAndRefresh(HWND owner, EntryList& list)
{
    CEOID id = list.CurrentEntry();
    OpenEntryEditor(list.GetSession(), owner, &id);
    list.SetCurrentEntry(id);
    list.Refresh();
}

HWND OwnerOf(const EntryList& list)
{
    return GetAncestor(list.Handle(), GA_ROOT);
}

// Work that writes: all of it is on disk, or nothing and the reason is returned, as the work returns its own.
template <typename Work> StoreTrouble AllOrNothing(DbJournal& journal, Work work)
{
    CeDBase::BulkScope bulk(journal);
    if (bulk.Trouble() != StoreTrouble::None)
        return bulk.Trouble();
    if (const StoreTrouble trouble = work(); trouble != StoreTrouble::None)
        return trouble;
    if (bulk.Trouble() != StoreTrouble::None || bulk.Commit())
        return bulk.Trouble();
    return bulk.Trouble() != StoreTrouble::None ? bulk.Trouble() : StoreTrouble::Other;
}

// The same step with each record, until one fails.
template <typename Ids, typename Step> StoreTrouble WithEach(DbJournal& journal, const Ids& ids, Step step)
{
    for (const CEOID id : ids)
        if (const StoreTrouble trouble = step(journal, id); trouble != StoreTrouble::None)
            return trouble;
    return StoreTrouble::None;
}

// Entries that cannot be read because the file is damaged there. What can be done with the others is done.
struct LeftOut {
    std::set<CEOID> entries;
    bool hasGrown = false; // in this try
    bool hasMore = false;  // that nobody can count
};

// What reading an entry has failed in: None where the work goes on without it.
StoreTrouble Skip(CEOID id, StoreTrouble trouble, LeftOut* leftOut)
{
    if (trouble != StoreTrouble::Damaged)
        return trouble;
    leftOut->entries.insert(id);
    leftOut->hasGrown = true;
    return StoreTrouble::None;
}

// Nothing is written any more in a transaction that has come upon damage. So such work goes on reading only,
// is then given up, and is done again without the entries that it has left out.
template <typename Work> StoreTrouble WithoutDamaged(DbJournal& journal, LeftOut* leftOut, Work work)
{
    StoreTrouble trouble = StoreTrouble::None;
    do {
        leftOut->hasGrown = false;
        (void)journal.SeekFirstRecord(); // what damage keeps out of the order is found out before
        trouble = AllOrNothing(journal, [&] {
            const StoreTrouble own = work();
            return own == StoreTrouble::None && leftOut->hasGrown ? StoreTrouble::Damaged : own;
        });
    } while (leftOut->hasGrown);
    return trouble;
}

std::wstring EntriesText(const LeftOut& leftOut)
{
    if (leftOut.hasMore)
        return L"some entries";
    const size_t count = leftOut.entries.size();
    return count == 1 ? L"1 entry" : std::to_wstring(count) + L" entries";
}

// Behind a command that writes. whole: that nothing was done; part: what was not done with those left out.
void TellWhatWasNotDone(const EntryList& list, StoreTrouble trouble, const wchar_t* whole,
                        const LeftOut& leftOut, const std::wstring& part)
{
    if (trouble != StoreTrouble::None)
        TellNotDone(OwnerOf(list), whole, trouble);
    else if (!leftOut.entries.empty() || leftOut.hasMore)
        TellNotDone(OwnerOf(list), part.c_str(), StoreTrouble::Damaged);
}

std::optional<ZColumn> SortColumn(const ColumnSet& columns)
{
    const int index = GetSortColumn(columns);
    if (index < 0)
        return std::nullopt;
    return columns.columns[static_cast<size_t>(index)];
}

bool IsSameSort(const ZColumn& a, const ZColumn& b)
{
    return a.Property() == b.Property() && a.Has(kColumnDescending) == b.Has(kColumnDescending);
}

// A record that is gone is deleted already. One that is still there was refused for a reason of its own.
StoreTrouble Delete(DbJournal& journal, CEOID id)
{
    if (journal.DeleteRecord(id) || journal.Trouble() != StoreTrouble::None)
        return journal.Trouble();
    return journal.SeekRecord(id) == id ? StoreTrouble::Other : journal.Trouble();
}

// A record that is gone, or that the store refuses as it is, is simply not copied.
StoreTrouble CopyRecord(DbJournal& journal, CEOID id, LeftOut* leftOut)
{
    if (leftOut->entries.contains(id))
        return StoreTrouble::None;
    if (journal.SeekRecord(id) != id)
        return Skip(id, journal.Trouble(), leftOut);
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    const CEOID read = journal.ReadRecord(&count, nullptr, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    if (!read)
        return Skip(id, journal.Trouble(), leftOut);
    if (leftOut->hasGrown)
        return StoreTrouble::None;
    (void)journal.WriteRecord(0, count, properties);
    return journal.Trouble();
}

StoreTrouble ResetCategoryUses()
{
    DbCategories categories;
    if (categories.Open(kCategoriesKey))
        categories.Reset();
    return categories.Trouble();
}

// What reading the whole current record fails in: a write of it would.
StoreTrouble TryReading(DbJournal& journal)
{
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    (void)journal.ReadRecord(&count, nullptr, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    return journal.Trouble();
}

// Of the journal's current record. Nothing is written to one that has none.
StoreTrouble DeleteCategories(DbJournal& journal, LeftOut* leftOut)
{
    const CEOID id = journal.CurrentRecord();
    if (leftOut->entries.contains(id))
        return StoreTrouble::None;
    const CEPROPID wanted = kPropCategories;
    WORD count = 1;
    CEPROPVAL* property = nullptr;
    const CEOID read = journal.ReadRecord(&count, &wanted, &property);
    const LocalBlock<CEPROPVAL> owner(property);
    if (!read || (property->wFlags & CEDB_PROPNOTFOUND))
        return Skip(id, journal.Trouble(), leftOut);
    if (const StoreTrouble trouble = TryReading(journal); trouble != StoreTrouble::None)
        return Skip(id, trouble, leftOut);
    if (leftOut->hasGrown)
        return StoreTrouble::None;
    property->wFlags = CEDB_PROPDELETE;
    (void)journal.WriteRecord(id, 1, property);
    return journal.Trouble();
}

// A walk that breaks off is not at the end, unless only damaged records follow.
StoreTrouble DeleteAllCategories(DbJournal& journal, LeftOut* leftOut)
{
    StoreTrouble trouble = ResetCategoryUses();
    if (trouble != StoreTrouble::None)
        return trouble;
    for (int found = journal.SeekFirstRecord(); found; found = journal.SeekNextRecord())
        if (trouble = DeleteCategories(journal, leftOut); trouble != StoreTrouble::None)
            return trouble;
    leftOut->hasMore = journal.Trouble() == StoreTrouble::Damaged;
    return leftOut->hasMore ? StoreTrouble::None : journal.Trouble();
}

} // namespace

void NewEntry(HWND owner, EntryList& list)
{
    list.ClearSelection();
    OpenEditorAndRefresh(owner, list);
}

// What cannot be read now is opened as no new entry.
void EditEntry(HWND owner, EntryList& list)
{
    const StoreTrouble trouble = list.TakeChosenRow();
    if (trouble != StoreTrouble::None)
        return TellNotDone(owner, L"The entry was not opened", trouble);
    OpenEditorAndRefresh(owner, list);
}

// Another program may change the store while the question stands, and with it what is selected: what is
// deleted is what was asked about.
void DeleteEntries(EntryList& list)
{
    const auto& selected = list.Selection().InOrder();
    const std::vector<CEOID> asked(selected.begin(), selected.end());
    if (!IsDeletionConfirmed(list.GetSession().settings))
        return list.SetSelectionFlag(0);
    if (!list.Handle())
        return; // the window was closed behind the question
    DbJournal& journal = list.GetSession().journal;
    const StoreTrouble trouble = AllOrNothing(journal, [&] { return WithEach(journal, asked, Delete); });
    if (trouble == StoreTrouble::None) {
        if (std::count(asked.begin(), asked.end(), list.CurrentEntry()))
            list.SetCurrentEntry(0);
        list.Selection().Clear();
    }
    list.Refresh();
    list.SetSelectionFlag(0);
    if (trouble != StoreTrouble::None)
        TellNotDone(OwnerOf(list), L"Nothing was deleted", trouble);
}

void CopyEntries(EntryList& list)
{
    list.SetSelectionFlag(1);
}

void PasteEntries(EntryList& list)
{
    if (!list.Handle())
        return;
    LeftOut leftOut;
    const auto copy = [&](DbJournal& from, CEOID id) { return CopyRecord(from, id, &leftOut); };
    DbJournal& journal = list.GetSession().journal;
    const StoreTrouble trouble = WithoutDamaged(
        journal, &leftOut, [&] { return WithEach(journal, list.Selection().InOrder(), copy); });
    list.Refresh();
    TellWhatWasNotDone(list, trouble, L"Nothing was pasted", leftOut,
                       EntriesText(leftOut) + (leftOut.entries.size() == 1 ? L" was" : L" were") +
                           L" not pasted");
}

// The list names categories and may be sorted by them.
void EditCategories(HWND owner, EntryList& list)
{
    if (ZCatsDlg(owner).DoModal() == 1)
        list.Refresh();
}

void CustomizeListColumns(HWND owner, EntryList& list)
{
    ColumnSet& columns = list.Columns();
    const std::optional<ZColumn> before = SortColumn(columns);
    (void)CustomizeColumns(owner, &columns);
    SaveColumns(columns, list.GetSession().settings);
    const std::optional<ZColumn> sort = SortColumn(columns);
    if (list.BuildColumns() && sort && !(before && IsSameSort(*before, *sort)))
        list.ApplySort(*sort);
}

void ClearCategories(EntryList& list)
{
    if (!list.Handle())
        return;
    LeftOut leftOut;
    DbJournal& journal = list.GetSession().journal;
    const StoreTrouble trouble =
        WithoutDamaged(journal, &leftOut, [&] { return DeleteAllCategories(journal, &leftOut); });
    list.Refresh();
    TellWhatWasNotDone(list, trouble, L"The categories were not taken from the entries", leftOut,
                       L"The categories were not taken from " + EntriesText(leftOut));
}
