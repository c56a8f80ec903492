// DbContacts: the contacts that entries refer to, and the set of contacts assigned to one entry.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "mervane/ce_dbase.h"

namespace mervane {
class ContactList;
} // namespace mervane

class DbContacts : public CeDBase {
  public:
    DbContacts();
    ~DbContacts() override;

    // key is kContactsKey (the File As text); owner, which may be null, gets the change notifications.
    [[nodiscard]] int Open(CEPROPID key = kContactsKey, HWND owner = nullptr);

    // Takes the assigned set from a blob (flags is always 256). 0 for a blob of a wrong shape, whose valid
    // leading identifiers are taken all the same.
    int SetAssigned(const CEBLOB& blob, DWORD flags);
    // Makes the blob of the assigned set; blob->lpb is a LocalAlloc block that the caller frees, null when
    // the set is empty. Returns 1 when the set is to be written: it is not empty.
    int SetBlob(CEBLOB* blob);

    // A contact's File As text from memory; empty when there is none. Borrowed, inside a ReadScope and until
    // the next write.
    std::wstring_view NameOf(CEOID id);

    const std::vector<CEOID>& Assigned() const { return m_assigned; }
    void Assign(CEOID id);   // appends, unless it is there
    void Unassign(CEOID id); // nothing when it is not there

    // The view of all contacts in which the assigned ones are checked; there is one at a time.
    //
    // Makes the list: a child of parent with a sunken edge, visible, of the given list style (0x18009:
    // report, selection always shown, no sort header, tab stop). rectangle: in the parent's client area. Null
    // on failure. The caller owns the window, inserts the columns File As (0) and Company (1), and hands
    // every notification of the list to OnNotify first, from the creation on.
    //
    // With contacts the list is an owner-data list: its texts and checks come by OnNotify. Where there are
    // none it is an ordinary list, with one column across it and no header, in which the caller inserts one
    // item that says so; for the first contact the list is to be made anew.
    HWND CreateList(HINSTANCE instance, HWND parent, const RECT& rectangle, int id, DWORD style);
    // Shows the contacts as they are now, in the database's sort, and the check boxes of the assigned ones.
    // To be called after the columns and the extended style are set, and whenever contacts have changed. The
    // focus stays on its contact. No contact is marked or assigned by it: none of the notifications that it
    // causes is one of IsAssignmentChange. 0 for a list that was made without contacts or is no window.
    int UpdateList(HWND list);
    // 1 when the notification is answered: *result is then what the parent returns for it (from a dialog, as
    // DWLP_MSGRESULT). A click on a check box, or space on the row that has the focus, assigns or unassigns
    // the contact and sends the parent, from inside, the notification of IsAssignmentChange; that one itself
    // is not answered (0), so that the parent goes on to it.
    int OnNotify(HWND list, NMHDR* notification, LRESULT* result);
    // LVN_ITEMCHANGED with two different state images. Opening or filling the list, the focus and the
    // selection never cause it: the user has checked or unchecked the contact of lParam.
    static bool IsAssignmentChange(const NMHDR& notification);

  private:
    std::vector<CEOID> m_assigned;
    std::unique_ptr<mervane::ContactList> m_list; // null: never made
};
