// EntryList: the list of journal entries, the main window's only content below the command bands. An
// owner-data list view: the control knows only how many rows there are and asks for what it paints.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "columns/column_set.h"
#include "data/session.h"
#include "list/display_cache.h"
#include "list/empty_notice.h"
#include "list/list_rows.h"
#include "list/row_selection.h"
#include "ui/window_hook.h"
#include "util/owners.h"

// Sent to the main window when the selection or its flag may have changed; wParam: the selection flag.
constexpr UINT kMsgSelectionChanged = WM_USER + 102;

class EntryList {
  public:
    explicit EntryList(const Session& session);
    ~EntryList();
    EntryList(const EntryList&) = delete;
    EntryList& operator=(const EntryList&) = delete;

    // Creates the control below topOffset pixels of the parent's client area, loads the column set, builds
    // the columns and applies the sort of the sort column. columns is borrowed and outlives the list. Returns
    // the control, or null when the parent is no window or the control cannot be made.
    HWND Create(HWND parent, ColumnSet* columns, DWORD style, int topOffset);

    // Rebuilds the row count and the empty notice and re-selects the selection and then the current entry. A
    // record that the list does not show leaves the selection.
    void Refresh();
    // Deletes every column and inserts the shown ones, then refreshes. False, without a refresh, when an
    // insertion fails.
    bool BuildColumns();
    // Hands the sort of a column to the database and refreshes.
    void ApplySort(const ZColumn& column);
    // Selects, focuses and scrolls to the row of a record; one that is not there loses the flag.
    void SelectRecord(CEOID id);
    void ClearSelection();
    // The window has another resolution: texts, images and columns follow. To be placed anew.
    void OnResolutionChanged();
    // Fits the list into the parent's client area below topOffset pixels.
    void Place(int topOffset);
    // Saves the column set and destroys the empty notice. Only after Create has loaded the column set.
    void Destroy();

    // Decodes a WM_NOTIFY from the list or its header; the value to return from the window procedure.
    LRESULT OnNotify(NMHDR* notification);

    HWND Handle() const { return m_list; }
    const Session& GetSession() const { return m_session; }
    // As given to Create, which has succeeded.
    ColumnSet& Columns() { return *m_columns; }
    SelectionSet& Selection() { return m_selection.Tracker().Selection(); }
    // The entry that the editor opens; 0 when there is none.
    CEOID CurrentEntry() const { return m_selection.Tracker().CurrentEntry(); }
    void SetCurrentEntry(CEOID id) { m_selection.Tracker().SetCurrentEntry(id); }
    // For a row that was chosen while its record could not be told (RowSelection::TakeChosenRow).
    StoreTrouble TakeChosenRow() { return m_selection.TakeChosenRow(); }
    // Whether the file was damaged where the last refresh read it: entries may be missing.
    bool IsCutShort() const { return m_isCutShort; }
    DWORD RowCount() const { return m_rowCount; }
    int SelectionFlag() const { return m_selection.Tracker().Flag(); }
    // Sets the flag and sends kMsgSelectionChanged with it.
    void SetSelectionFlag(int flag);

  private:
    static LRESULT HandleListMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam);

    void OnGetDispInfo(LVITEMW* item);
    void OnCacheHint(const NMLVCACHEHINT& hint);
    void OnColumnClick(int position);
    void OnDoubleClick();
    void OnEndTrack(const NMHEADERW& track);
    void OnDividerDoubleClick(int position);
    void OnListGone();

    void MeasureRows();
    void SetImages();
    void SetWidths();
    void DropHeaderImages();
    void SetColumnWidth(int position, int width);
    bool IsShownColumn(int position) const;
    ZColumn& ColumnAt(int position);
    // In another order, or under another filter, the list begins at its top: elsewhere it keeps its place.
    enum class Rows { InTheirOrder, InAnotherOrder };
    bool Rebuild(Rows rows);
    void ReportIf(bool changed);

    const Session m_session;
    DWORD m_rowCount = 0; // as the control was told
    HWND m_parent = nullptr;
    HWND m_list = nullptr;
    WindowHook m_hook;
    ColumnSet* m_columns = nullptr; // null until loaded
    UniqueFont m_font;              // where it has one of its own
    UniqueImageList m_headerImages;
    FilteredRows m_rows;
    DisplayCache m_cache;
    EmptyNotice m_notice;
    RowSelection m_selection;
    bool m_isCutShort = false;
};
