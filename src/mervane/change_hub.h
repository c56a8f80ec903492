// Tells other processes of this one's changes, and the windows of this one of theirs.
//
// Each open store has a message-only window of class "MervaneStore" whose title is the store's path key. A
// writer posts what it has committed to the windows of the same title, its own excepted. Other tools post
// nothing: what they change is noticed when the store is next read, at the latest by a timer.
#pragma once

#include <functional>
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
    // look makes the store read what has changed; it calls NoteForeignChange when something has.
    ChangeHub(const std::wstring& pathKey, std::function<void()> look);
    ~ChangeHub();
    ChangeHub(const ChangeHub&) = delete;
    ChangeHub& operator=(const ChangeHub&) = delete;

    // From now on changes are heard.
    void Start();
    // The windows of this process that are told of a database's changes; null is none.
    void AddOwner(TableId table, HWND owner, const void* who);
    void RemoveOwner(const void* who);

    // Tells the other processes.
    void Announce(TableId table, const Change& change) const;
    // Another connection has changed the store. When no process tells what, the owners hear that all may be
    // new.
    void NoteForeignChange();

  private:
    struct Owner {
        TableId table;
        HWND window;
        const void* who;
    };
    enum class Unexplained { None, New, Old }; // a foreign change that no process has told of

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnPeerChange(WPARAM packed, CEOID id);
    void OnTimer();

    std::wstring m_pathKey;
    std::function<void()> m_look;
    std::vector<Owner> m_owners;
    HWND m_window = nullptr;
    Unexplained m_unexplained = Unexplained::None;
};

} // namespace mervane
