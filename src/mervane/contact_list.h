// The list of all contacts whose check boxes tell which ones are assigned. It holds no texts: the list view
// asks for what it paints.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <string_view>
#include <vector>

#include "mervane/db_contacts.h"

namespace mervane {

class ContactList {
  public:
    // contacts outlives the list.
    explicit ContactList(DbContacts& contacts) : m_contacts(contacts) {}
    ContactList(const ContactList&) = delete;
    ContactList& operator=(const ContactList&) = delete;

    // As the operations of DbContacts.
    HWND Create(HINSTANCE instance, HWND parent, const RECT& rectangle, int id, DWORD style);
    [[nodiscard]] bool Update(HWND list);
    [[nodiscard]] bool OnNotify(HWND list, NMHDR* notification, LRESULT* result);

  private:
    struct Texts {
        std::wstring fileAs;
        std::wstring company;
    };

    int RowCount() const { return static_cast<int>(m_rows.size()); }
    void ReadRows();
    // From this row to that one, in one read; what was held before is forgotten.
    void ReadTexts(int from, int to);
    std::wstring_view TextOf(int row, int column);
    bool IsAssigned(int row) const;
    void RestoreFocus(HWND list, CEOID id, int row) const;

    void OnGetDispInfo(LVITEMW& item);
    int OnFindItem(const NMLVFINDITEMW& wanted);
    void OnClick(HWND list, const NMITEMACTIVATE& click);
    void OnKeyDown(HWND list, WORD key);
    void Toggle(HWND list, int row);

    DbContacts& m_contacts;
    // The contacts as they were when the list was last updated: what is seen in a row is what is assigned,
    // also when another program has changed them since.
    std::vector<CEOID> m_rows;
    std::vector<Texts> m_texts; // of the rows from m_firstText on
    int m_firstText = 0;
    bool m_textsHold = true; // false: some could not be read, so all are read again
};

} // namespace mervane
