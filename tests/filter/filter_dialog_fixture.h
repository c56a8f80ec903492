// The filter's dialog over settings and categories of a test's own.
#pragma once

#include <functional>

#include "editor/list_in_editor.h"
#include "filter/filter_dialog.h"
#include "filter/filter_fixture.h"
#include "support/dialog_window.h"
#include "support/test_windows.h"

// The open dialog.
class OpenFilter : public DialogWindow {
  public:
    using DialogWindow::DialogWindow;

    bool IsShown(int id) const { return IsWindowVisible(Item(id)) != FALSE; }
    ListInEditor Months() const { return ListInEditor(Item(116)); }
    // Null when there is none.
    ListInEditor Categories() const;
    std::vector<std::wstring> CheckedMonths() const;

    SYSTEMTIME Day(int picker) const;
    void SetDay(int picker, WORD year, WORD month, WORD day) const;
};

class FilterDialogTest : public JournalFilterTest {
  protected:
    // Runs the dialog; the action must end it. Its answer.
    bool Run(bool categoriesMode, const std::function<void(const OpenFilter&)>& action);
    // What is stored in the subkey of the filter; 0xDEAD when nothing is.
    static DWORD Stored(const wchar_t* name) { return Own().GetNumber(L"Filter", name, 0xDEAD); }
    static FilterState& Filter() { return Own().Filter(); }

    TestParent m_parent;
};
