// Tells other processes of this one's changes, and the windows of this one of theirs.
//
// Each open store has a message-only window of class "MervaneStore" whose title is the store's path key. A
// writer posts what it has committed to the windows of the same title, its own excepted.
#pragma once

#include <string>
#include <vector>

#include "mervane/ce_dbase.h"

namespace mervane {

struct Change {
    WPARAM code; // one of the kChange... codes
    CEOID id = 0;
    bool touchesNames = true; // what a record is called or whether it is there: others show it
};

class ChangeHub {
  public:
    explicit ChangeHub(const std::wstring& pathKey);
    ~ChangeHub();
    ChangeHub(const ChangeHub&) = delete;
    ChangeHub& operator=(const ChangeHub&) = delete;

    // The windows of this process that are told of a database's changes.
    void AddOwner(TableId table, HWND owner, const void* who);
    void RemoveOwner(const void* who);

    // Tells the other processes.
    void Announce(TableId table, const Change& change) const;

  private:
    struct Owner {
        TableId table;
        HWND window;
        const void* who;
    };
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnPeerChange(WPARAM packed, CEOID id) const;
    void TellOwner(const Owner& owner, TableId table, const Change& change) const;

    std::wstring m_pathKey;
    std::vector<Owner> m_owners;
    HWND m_window = nullptr;
};

} // namespace mervane
