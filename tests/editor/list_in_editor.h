// A list view of the editor in the test's own process, and the user's mouse over it.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>

class ListInEditor {
  public:
    explicit ListInEditor(HWND list) : m_list(list) {}

    HWND Window() const { return m_list; }
    int Count() const;
    std::wstring Text(int item, int column = 0) const;
    // Of the first column; -1 when no item has this text.
    int Find(const std::wstring& text) const;
    bool IsChecked(const std::wstring& text) const;
    // The state image: 0 none, 1 an empty box, 2 a checked one.
    int Box(int item) const;
    bool Has(int item, UINT state) const;
    DWORD ExtendedStyle() const;
    int Columns() const;
    std::wstring ColumnTitle(int column) const;
    int ColumnWidth(int column) const;

    // As the keyboard's space bar or another program would.
    void Check(const std::wstring& text, bool checked) const;
    void ClickBox(int item) const;
    void ClickLabel(int item) const;
    void ClickBelow() const; // where there is no item
    void DoubleClick(int item) const;

  private:
    POINT LabelPoint(int item) const;
    POINT BoxPoint(int item) const;
    LRESULT Ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    void Click(POINT point) const;

    HWND m_list;
};
