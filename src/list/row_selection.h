// RowSelection: carries the selection between the list control, which knows rows, and the tracker, which
// knows records. An operation that returns true wants the main window told.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <vector>

#include "list/display_cache.h"
#include "list/selection_tracker.h"

class RowSelection {
  public:
    // All three are borrowed and outlive this. rowCount: how many rows the list has, as it was told.
    RowSelection(DbJournal& journal, const DWORD& rowCount, const DisplayCache& cache)
        : m_journal(journal), m_rowCount(rowCount), m_cache(cache)
    {}

    // The control, which is borrowed; null when there is none (any more).
    void Attach(HWND list) { m_list = list; }
    SelectionTracker& Tracker() { return m_tracker; }
    const SelectionTracker& Tracker() const { return m_tracker; }

    // While it is set, the control's messages on states are the program's own doing, and nothing is tracked.
    bool* Quiet() { return &m_quiet; }

    // LVN_ITEMCHANGED and LVN_ODSTATECHANGED.
    [[nodiscard]] bool OnItemChanged(const NMLISTVIEW& change);
    [[nodiscard]] bool OnRangeChanged(const NMLVODSTATECHANGE& change);

    // Selects, focuses and scrolls to the row of a record. One that the list does not show loses the flag and
    // leaves the selection.
    [[nodiscard]] bool Select(CEOID id);
    // The same for each selected record and then the current entry, after the rows have changed.
    [[nodiscard]] bool SelectAgain();
    // The row that was chosen while nobody could tell which record it is, asked for again: it becomes the
    // current entry. Returns why that is not known even now; None too where there is no such row.
    StoreTrouble TakeChosenRow();
    void Clear();

  private:
    bool IsUsersChoice(const NMLISTVIEW& change) const;
    void SelectRows();
    void AddSelectedRows();
    void AddWhatIsLeft();
    void TakeFocus();
    int RowOf(CEOID id);
    CEOID IdOfRow(int row);

    DbJournal& m_journal;
    const DWORD& m_rowCount;
    const DisplayCache& m_cache;
    HWND m_list = nullptr;
    SelectionTracker m_tracker;
    // Selected, and nobody could look for their rows. What is chosen next comes in their place: nobody sees
    // that they are selected.
    std::vector<CEOID> m_unseen;
    bool m_quiet = false;
    bool m_unread = false; // the row asked for last could not be looked for: its record may be there
};
