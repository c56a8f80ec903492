#include "find/find_command.h"

#include "find/find_dialog.h"
#include "find/find_results_dialog.h"
#include "find/find_search.h"
#include "list/entry_list.h"
#include "list/not_done_box.h"
#include "ui/hourglass.h"

namespace {

std::vector<CEOID> Search(DbJournal& journal, const FindRequest& request, CEOID currentEntry)
{
    const ScopedHourglass work;
    return FindEntries(journal, request, currentEntry);
}

// A record that the list does not show leaves the selection. The last one that stays gets the focus, as if
// they had been selected one by one.
void SelectFound(EntryList& list, const std::vector<CEOID>& found)
{
    const ScopedHourglass work;
    SelectionSet& selection = list.Selection();
    for (const CEOID id : found)
        selection.Append(id);
    list.Refresh();
    if (!selection.IsEmpty())
        list.SelectRecord(selection.InOrder().back());
}

} // namespace

void RunFind(HWND owner, EntryList& list, FindRequest* request)
{
    const Session& session = list.GetSession();
    const CEOID currentEntry = list.CurrentEntry();
    if (!RunFindDialog(owner, session.settings, currentEntry != 0, request))
        return;
    list.ClearSelection();
    const auto found = Search(session.journal, *request, currentEntry);
    const StoreTrouble trouble = session.journal.Trouble();
    SelectFound(list, found);
    RunFindResults(session, owner, found);
    list.Refresh();
    if (trouble != StoreTrouble::None)
        TellNotDone(owner, L"Not every entry was looked at", trouble);
}
