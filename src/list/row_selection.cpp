#include "list/row_selection.h"

#include <algorithm>
#include <utility>

#include "list/list_place.h"
#include "ui/scoped_quiet.h"
#include "ui/screen/scoped.h"

namespace {

// The first row of the page after EnsureVisible of a row, counted without the control.
int TopAfterShowing(int row, int top, int page)
{
    if (row < top)
        return row;
    return row < top + page ? top : row - page + 1;
}

} // namespace

bool RowSelection::IsUsersChoice(const NMLISTVIEW& change) const
{
    constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
    return !m_quiet && (change.uChanged & LVIF_STATE) && ((change.uOldState ^ change.uNewState) & kChosen);
}

bool RowSelection::OnItemChanged(const NMLISTVIEW& change)
{
    if (!IsUsersChoice(change))
        return false;
    bool report = false;
    for (const CEOID id : std::exchange(m_unseen, {}))
        report |= m_tracker.Selection().Remove(id);
    if (change.iItem == -1 && (change.uNewState & ~change.uOldState & LVIS_SELECTED)) {
        const CeDBase::ReadScope scope(m_journal);
        AddSelectedRows();
        report = true;
    } else if (change.iItem == -1 && m_tracker.OnAllItemsChanged(change.uOldState, change.uNewState)) {
        AddWhatIsLeft();
        report = true;
    } else if (change.iItem != -1)
        report |= m_tracker.OnItemChanged(IdOfRow(change.iItem), change.uOldState, change.uNewState);
    return report;
}

bool RowSelection::OnRangeChanged(const NMLVODSTATECHANGE& change)
{
    if (m_quiet)
        return false;
    m_unseen.clear();
    m_tracker.Selection().Clear();
    if (change.iFrom > change.iTo)
        return true;
    const CeDBase::ReadScope scope(m_journal);
    const int last = std::min(change.iTo, static_cast<int>(m_rowCount) - 1);
    if (change.uNewState & LVIS_SELECTED)
        for (int row = std::max(change.iFrom, 0); row <= last; ++row)
            m_tracker.Selection().Append(IdOfRow(row));
    AddSelectedRows();
    return true;
}

// At a click on one of several selected rows some systems tell that "all" were deselected. They tell nothing
// of the row that stays selected, nor of its focus.
void RowSelection::AddWhatIsLeft()
{
    constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
    const CeDBase::ReadScope scope(m_journal);
    for (int row = -1; (row = ListView_GetNextItem(m_list, row, LVNI_SELECTED)) >= 0;)
        (void)m_tracker.OnItemChanged(IdOfRow(row), 0, ListView_GetItemState(m_list, row, kChosen));
}

// A range may be added to rows that were selected before and still are.
void RowSelection::AddSelectedRows()
{
    SelectionSet& selection = m_tracker.Selection();
    if (static_cast<size_t>(ListView_GetSelectedCount(m_list)) == selection.Count())
        return;
    for (int row = -1; (row = ListView_GetNextItem(m_list, row, LVNI_SELECTED)) >= 0;)
        selection.Append(IdOfRow(row));
}

bool RowSelection::Select(CEOID id)
{
    constexpr UINT kState = LVIS_SELECTED | LVIS_FOCUSED;
    const ScopedQuiet quiet(&m_quiet);
    const int row = RowOf(id);
    if (row < 0 && m_unread)
        return false;
    if (row < 0)
        return m_tracker.OnRecordMissing(id);
    ListView_SetItemState(m_list, row, kState, kState);
    ListView_EnsureVisible(m_list, row, FALSE);
    TakeFocus();
    return m_tracker.OnRecordSelected(id);
}

bool RowSelection::SelectAgain()
{
    const size_t count = m_tracker.Selection().Count();
    const int flag = m_tracker.Flag();
    const CEOID current = m_tracker.CurrentEntry();
    if (count)
        SelectRows();
    if (current)
        (void)Select(current);
    return m_tracker.Selection().Count() != count || m_tracker.Flag() != flag;
}

// There may be thousands: they scroll once, to where they would have scrolled one by one, and the focus is
// taken once.
void RowSelection::SelectRows()
{
    const ScopedQuiet quiet(&m_quiet);
    SelectionSet& selection = m_tracker.Selection();
    const int page = ListView_GetCountPerPage(m_list);
    std::vector<CEOID> missing;
    m_unseen.clear();
    int flag = m_tracker.Flag();
    const int topBefore = ListView_GetTopIndex(m_list);
    int top = topBefore;
    {
        const ScopedRedrawPause pause(m_list);
        for (const CEOID id : selection.InOrder()) {
            const int row = RowOf(id);
            if (row < 0 && m_unread) {
                m_unseen.push_back(id);
                continue;
            }
            flag = row >= 0;
            if (!flag) {
                missing.push_back(id);
                continue;
            }
            ListView_SetItemState(m_list, row, LVIS_SELECTED, LVIS_SELECTED);
            top = TopAfterShowing(row, top, page);
        }
    }
    for (const CEOID id : missing)
        selection.Remove(id);
    m_tracker.SetFlag(flag); // as the last one that could be looked for left it
    if (top != topBefore)
        ScrollToTop(m_list, top);
    if (!selection.IsEmpty())
        TakeFocus();
}

StoreTrouble RowSelection::TakeChosenRow()
{
    constexpr UINT kState = LVIS_SELECTED | LVIS_FOCUSED;
    const int row = ListView_GetNextItem(m_list, -1, LVNI_SELECTED | LVNI_FOCUSED);
    if (m_tracker.CurrentEntry() || row < 0)
        return StoreTrouble::None;
    const CEOID id = IdOfRow(row);
    if (!id)
        return m_journal.Trouble();
    (void)m_tracker.OnItemChanged(id, 0, kState);
    return StoreTrouble::None;
}

void RowSelection::Clear()
{
    const ScopedQuiet quiet(&m_quiet);
    if (m_list)
        ListView_SetItemState(m_list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    m_unseen.clear();
    m_tracker.Clear();
}

// A window in the background, or behind a dialog, gets its focus back when it is activated.
void RowSelection::TakeFocus()
{
    if (GetActiveWindow() == GetAncestor(m_list, GA_ROOT))
        SetFocus(m_list);
}

// -1 for a record that is not there or that the list does not show.
int RowSelection::RowOf(CEOID id)
{
    const int row = m_journal.RowOf(id);
    m_unread = m_journal.IsOpen() && m_journal.Trouble() != StoreTrouble::None;
    return row < static_cast<int>(m_rowCount) ? row : -1;
}

// What is seen counts, so the cache comes first; rows outside it are looked up in the journal.
CEOID RowSelection::IdOfRow(int row)
{
    if (row < 0 || row >= static_cast<int>(m_rowCount))
        return 0;
    const CEOID cached = m_cache.Row(row).id;
    return cached ? cached : m_journal.IdOfRow(static_cast<uint32_t>(row));
}
