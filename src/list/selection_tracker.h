// SelectionTracker: the selected records, the current entry and the selection flag, and how the list's
// messages change them. An operation that returns true wants the main window told.
#pragma once

#include <windows.h>

#include "list/selection_set.h"

class SelectionTracker {
  public:
    SelectionSet& Selection() { return m_selection; }
    const SelectionSet& Selection() const { return m_selection; }
    // The record that has the focus; 0: none.
    CEOID CurrentEntry() const { return m_currentEntry; }
    void SetCurrentEntry(CEOID id) { m_currentEntry = id; }
    // Paste is offered only while it is 1. Selecting by mouse or key leaves it as it is.
    int Flag() const { return m_flag; }
    void SetFlag(int flag) { m_flag = flag; }

    void Clear();
    // The program has selected a record and given it the focus.
    [[nodiscard]] bool OnRecordSelected(CEOID id);
    // A record that the program was to select is not in the list.
    [[nodiscard]] bool OnRecordMissing(CEOID id);

    // The states of a row's record have changed; id 0: the row has none.
    [[nodiscard]] bool OnItemChanged(CEOID id, UINT oldState, UINT newState);
    // The same of all rows at once.
    [[nodiscard]] bool OnAllItemsChanged(UINT oldState, UINT newState);

  private:
    bool Deselect(CEOID id);

    SelectionSet m_selection;
    CEOID m_currentEntry = 0;
    int m_flag = 0;
};
