// Sees whether an edit control is told to select all its text; what the control does by itself does not
// count.
#pragma once

#include <windows.h>
#include <commctrl.h>

class SelectionLog {
  public:
    explicit SelectionLog(HWND edit) : m_edit(edit)
    {
        SetWindowSubclass(edit, Procedure, 77, reinterpret_cast<DWORD_PTR>(this));
    }
    ~SelectionLog() { RemoveWindowSubclass(m_edit, Procedure, 77); }
    SelectionLog(const SelectionLog&) = delete;
    SelectionLog& operator=(const SelectionLog&) = delete;

    bool AllSelected() const { return m_allSelected; }

  private:
    static LRESULT CALLBACK Procedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR self)
    {
        if (message == EM_SETSEL && wParam == 0 && lParam == -1)
            reinterpret_cast<SelectionLog*>(self)->m_allSelected = true;
        return DefSubclassProc(edit, message, wParam, lParam);
    }

    HWND m_edit;
    bool m_allSelected = false;
};
