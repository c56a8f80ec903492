// The view Assign Contacts: the store's list of contacts, which keeps the assigned ones itself.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "editor/editor_record.h"

class ContactView {
  public:
    // quiet is the editor's flag: while it is set, changes in the list are the program's own.
    ContactView(EditorRecord* record, bool* quiet) : m_record(record), m_quiet(quiet) {}

    // Makes the filled list, a child of editor. False when it could not be made.
    [[nodiscard]] bool Create(HWND editor, const RECT& rect);
    void Destroy();
    // null while the view is not shown.
    HWND Window() const { return m_list; }

    // Lists what the store has now; what is listed stays where that cannot be read. False when the list has
    // to be made anew for that: there are contacts now and there were none, or the other way round.
    [[nodiscard]] bool Refresh();

    // A notification from the list; true when the user has checked or unchecked a contact.
    bool OnNotify(NMHDR* notification, LRESULT* result);

  private:
    void Fill();

    EditorRecord* m_record;
    bool* m_quiet;
    bool m_isUnread = false; // that is what the list says
    HWND m_list = nullptr;   // the editor's window destroys what Destroy does not
};
