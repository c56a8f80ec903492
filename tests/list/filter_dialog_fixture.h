// The filter's dialog over settings and categories of a test's own.
#pragma once

#include <functional>

#include "editor/list_in_editor.h"
#include "list/filter_dialog.h"
#include "list/filter_fixture.h"
#include "support/test_windows.h"

// The open dialog.
class OpenFilter {
  public:
    explicit OpenFilter(HWND window) : m_window(window) {}

    HWND Window() const { return m_window; }
    HWND Item(int id) const { return GetDlgItem(m_window, id); }
    bool IsShown(int id) const { return IsWindowVisible(Item(id)) != FALSE; }
    bool IsEnabled(int id) const { return IsWindowEnabled(Item(id)) != FALSE; }
    bool IsChecked(int id) const { return IsDlgButtonChecked(m_window, id) == BST_CHECKED; }
    ListInEditor Months() const { return ListInEditor(Item(116)); }
    // Null when there is none.
    ListInEditor Categories() const;
    std::vector<std::wstring> CheckedMonths() const;

    void Click(int id) const { SendMessageW(Item(id), BM_CLICK, 0, 0); }
    void Press(int id) const { SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0); }
    SYSTEMTIME Day(int picker) const;
    void SetDay(int picker, WORD year, WORD month, WORD day) const;
    // The dialog's part in the program's work: keys go as its message loop hands them on.
    void Key(WORD key) const;
    void AltKey(WORD key) const;

  private:
    HWND m_window;
};

class FilterDialogTest : public JournalFilterTest {
  protected:
    // Runs the dialog; the action must end it. Its answer.
    bool Run(bool categoriesMode, const std::function<void(const OpenFilter&)>& action);
    // What is stored in the subkey of the filter; 0xDEAD when nothing is.
    static DWORD Stored(const wchar_t* name) { return App().GetNumber(L"Filter", name, 0xDEAD); }
    static FilterState& Filter() { return App().Filter(); }

    TestParent m_parent;
};
