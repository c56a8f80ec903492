// An entry list over a journal of its own, in a plain parent window that routes what the list sends.
#pragma once

#include "list/entry_list.h"
#include "support/journal_fixture.h"
#include "support/test_windows.h"

class EntryListTest : public JournalTest {
  protected:
    EntryListTest();

    // Creates the list over what the journal holds by now.
    void CreateList(int topOffset = 0);
    HWND Handle() const { return m_list.Handle(); }
    HWND Header() const { return ListView_GetHeader(m_list.Handle()); }

    // Paints everything that can be seen.
    void Paint() const;
    // What the control says it shows; a row that was not painted before may be blank.
    std::wstring Cell(int row, int column = 0) const;
    std::wstring HeaderText(int column) const;
    LVCOLUMNW Column(int column) const;
    // What the list answers when it is asked for a cell, on top of what asked has already.
    LVITEMW Answer(int row, int column, UINT mask, LVITEMW asked = {}) const;
    int ImageOf(int row, int column) const { return Answer(row, column, LVIF_IMAGE).iImage; }
    UINT StateOf(int row) const;
    bool IsSelected(int row) const { return (StateOf(row) & LVIS_SELECTED) != 0; }
    std::vector<int> SelectedRows() const;
    std::vector<CEOID> Selected(); // in the order of selecting
    int RowCount() const { return ListView_GetItemCount(Handle()); }
    // A number of the settings; 0xDEAD when it is not stored.
    static DWORD Stored(const wchar_t* name) { return Own().GetNumber(kSettings, name, 0xDEAD); }
    HWND Notice() const { return FindWindowExW(Handle(), nullptr, L"STATIC", nullptr); }

    // Real input by messages; keys are MK_CONTROL and MK_SHIFT.
    void ClickRow(int row, UINT keys = 0);
    void DoubleClickRow(int row);
    void PressKey(UINT key, bool shift = false, bool control = false);
    void ClickHeader(int column);
    void DragDivider(int column, int by);

    // The last flag that the parent was told; -1: none yet.
    int LastReport() const { return m_reports.empty() ? -1 : static_cast<int>(m_reports.back()); }

    std::vector<WPARAM> m_reports;
    std::vector<WPARAM> m_commands;
    bool m_deselectsOnEmptying =
        false;                   // tells of rows deselected when the control is emptied, as some systems do
    bool m_handsFocusOn = false; // to the list, as the main window does
    HCURSOR m_cursorWhileEmptying = nullptr;
    std::vector<int> m_blankRows; // rows for which the control was given an empty first cell
    ColumnSet m_columns;
    EntryList m_list{Own()};
    TestParent m_parent;

  private:
    bool OnParentMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    void Click(HWND window, POINT point, UINT keys);
};
