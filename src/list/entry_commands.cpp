#include "list/entry_commands.h"

#include <vector>

#include "app/journal_app.h"
#include "editor/editor_settings.h"
#include "editor/entry_editor.h"
#include "list/columns_dialog.h"
#include "list/entry_list.h"
#include "mervane/db_categories.h"
#include "mervane/z_cats_dlg.h"
#include "ui/ownerless_box.h"
#include "util/owners.h"

namespace {

bool IsDeletionConfirmed()
{
    if (!ConfirmsDeletions(App()))
        return true;
    return ShowOwnerlessBox(L"Delete record?", L"Confirm", MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

// The record that is open may be written anew, under another identifier, when another program deletes it
// meanwhile.
void OpenEditorAndRefresh(HWND owner, EntryList& list)
{
    CEOID id = list.CurrentEntry();
    OpenEntryEditor(owner, &id);
    list.SetCurrentEntry(id);
    list.Refresh();
}

// Nothing is reported: a record that is gone, cannot be read or cannot be written is simply not copied.
void CopyRecord(DbJournal& journal, CEOID id)
{
    if (journal.SeekRecord(id) != id)
        return;
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    const CEOID read = journal.ReadRecord(&count, nullptr, &properties);
    const LocalBlock<CEPROPVAL> owner(properties);
    if (read)
        (void)journal.WriteRecord(0, count, properties);
}

void ResetCategoryUses()
{
    DbCategories categories;
    if (categories.Open(kCategoriesKey))
        categories.Reset();
}

// Of the journal's current record. Nothing is written to one that has none.
void DeleteCategories(DbJournal& journal)
{
    const CEPROPID wanted = kPropCategories;
    WORD count = 1;
    CEPROPVAL* property = nullptr;
    const CEOID id = journal.ReadRecord(&count, &wanted, &property);
    const LocalBlock<CEPROPVAL> owner(property);
    if (!id || (property->wFlags & CEDB_PROPNOTFOUND))
        return;
    property->wFlags = CEDB_PROPDELETE;
    (void)journal.WriteRecord(id, 1, property);
}

} // namespace

void NewEntry(HWND owner, EntryList& list)
{
    list.ClearSelection();
    OpenEditorAndRefresh(owner, list);
}

void EditEntry(HWND owner, EntryList& list)
{
    OpenEditorAndRefresh(owner, list);
}

// Another program may change the store while the question stands, and with it what is selected: what is
// deleted is what was asked about.
void DeleteEntries(EntryList& list)
{
    const auto& selected = list.Selection().InOrder();
    const std::vector<CEOID> asked(selected.begin(), selected.end());
    if (!IsDeletionConfirmed())
        return list.SetSelectionFlag(0);
    {
        DbJournal& journal = App().Journal();
        CeDBase::BulkScope bulk(journal);
        for (const CEOID id : asked) {
            journal.DeleteRecord(id);
            if (id == list.CurrentEntry())
                list.SetCurrentEntry(0);
        }
        (void)bulk.Commit();
    }
    list.Selection().Clear();
    list.Refresh();
    list.SetSelectionFlag(0);
}

void CopyEntries(EntryList& list)
{
    list.SetSelectionFlag(1);
}

void PasteEntries(EntryList& list)
{
    {
        DbJournal& journal = App().Journal();
        CeDBase::BulkScope bulk(journal);
        for (const CEOID id : list.Selection().InOrder())
            CopyRecord(journal, id);
        (void)bulk.Commit();
    }
    list.Refresh();
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
    const bool taken = CustomizeColumns(owner, &columns);
    SaveColumns(columns, App());
    const int sort = GetSortColumn(columns);
    if (list.BuildColumns() && taken && sort >= 0)
        list.ApplySort(columns.columns[static_cast<size_t>(sort)]);
}

void ClearCategories(EntryList& list)
{
    {
        DbJournal& journal = App().Journal();
        CeDBase::BulkScope bulk(journal);
        ResetCategoryUses();
        for (int found = journal.SeekFirstRecord(); found; found = journal.SeekNextRecord())
            DeleteCategories(journal);
        (void)bulk.Commit();
    }
    list.Refresh();
}
