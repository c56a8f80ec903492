// The view Assign Categories: the store's list of categories, its boxes kept in step with the editor's
// category stack.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "editor/editor_record.h"

class CategoryView {
  public:
    enum class Outcome { Nothing, Assigned, Edit }; // the stack changed; the categories are to be edited

    // quiet is the editor's flag: while it is set, changes in the list are the program's own.
    CategoryView(EditorRecord* record, bool* quiet) : m_record(record), m_quiet(quiet) {}

    // Makes the filled list, a child of editor. False when it could not be made.
    [[nodiscard]] bool Create(HWND editor, const RECT& rect);
    void Destroy();
    // null while the view is not shown.
    HWND Window() const { return m_list; }

    // After the user has edited the categories: what is not listed any more leaves the stack.
    void TakeEdited();
    // Lists what the store has now.
    void Refresh();
    // A notification from the list.
    Outcome OnNotify(const NMHDR& notification);

  private:
    void CheckAssigned();
    void OnTap(const NMITEMACTIVATE& tap);
    bool OnItemChanging(const NMLISTVIEW& change);

    EditorRecord* m_record;
    bool* m_quiet;
    HWND m_list = nullptr; // the editor's window destroys what Destroy does not
};
