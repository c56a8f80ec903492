// A report list view of another process.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "e2e/harness/remote_memory.h"

class RemoteListView {
  public:
    // The list view itself.
    explicit RemoteListView(HWND list);

    HWND Handle() const { return m_list; }
    int RowCount() const;
    int ColumnCount() const;
    std::wstring ColumnTitle(int column) const;
    int ColumnWidth(int column) const;
    std::wstring Text(int row, int column) const;
    std::vector<std::wstring> Row(int row) const;
    // The first row whose cell has this text; -1 when none has.
    int FindRow(int column, const std::wstring& text) const;

    std::vector<int> SelectedRows() const;
    int FocusedRow() const;
    int TopRow() const;
    UINT State(int row, UINT mask) const;
    // The state image's number: 2 is a checked box, 1 an empty one, 0 none.
    int CheckImage(int row) const;

    // Scrolls the row into view and returns the middle of its label, or of its state image, on the screen.
    POINT LabelPoint(int row) const;
    POINT CheckPoint(int row) const;
    // The middle of a column's header on the screen.
    POINT HeaderPoint(int column) const;

  private:
    wchar_t* RemoteText() const;
    std::wstring ReadText() const;
    RECT ItemRect(int row, int part) const;
    HWND Header() const;

    HWND m_list;
    UniqueKernelHandle m_process;
    // For a descriptor and its text; kept, for a list has many cells.
    mutable RemoteBlock m_block;
};
