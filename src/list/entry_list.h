// EntryList: the list of journal entries, the main window's only content below the command bands. An owner-data
// list view: the control knows only how many rows there are and asks for what it paints.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <memory>

#include "list/column_set.h"
#include "list/selection_set.h"
#include "mervane/db_journal.h"

// Sent to the main window when the selection or its flag may have changed; wParam: the selection flag.
constexpr UINT kMsgSelectionChanged = WM_USER + 102;

class EntryList {
  public:
    EntryList();
    ~EntryList();
    EntryList(const EntryList&) = delete;
    EntryList& operator=(const EntryList&) = delete;

    // Creates the control below topOffset pixels of the parent's client area, loads the column set, builds the
    // columns and applies the sort of the sort column. columns is borrowed and outlives the list. Returns the
    // control, or null when the parent is no window or the control cannot be made.
    HWND Create(HWND parent, ColumnSet* columns, DWORD style, int topOffset);

    // Rebuilds the row count and the empty notice and re-selects the selection and then the current entry.
    void Refresh();
    // Deletes every column and inserts the shown ones, then refreshes. False, without a refresh, when an insertion
    // fails.
    bool BuildColumns();
    // Hands the sort of a column to the database and refreshes.
    void ApplySort(const ZColumn& column);
    // Selects, focuses and scrolls to the row of a record; one that is not there loses the flag.
    void SelectRecord(CEOID id);
    void ClearSelection();
    // Fits the list into the parent's client area below topOffset pixels.
    void Place(int topOffset);
    // Saves the column set and destroys the empty notice. Only after Create has loaded the column set.
    void Destroy();

    // Decodes a WM_NOTIFY from the list or its header; the value to return from the window procedure.
    LRESULT OnNotify(NMHDR* notification);

    HWND Handle() const;
    SelectionSet& Selection();
    // The entry that the editor opens; 0 when there is none.
    CEOID CurrentEntry() const;
    void SetCurrentEntry(CEOID id);
    int SelectionFlag() const;
    // Sets the flag and sends kMsgSelectionChanged with it.
    void SetSelectionFlag(int flag);

  private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};
