// Tells other processes of this one's changes, and the windows of this one of theirs.
//
// Each open store has a message-only window of class "MervaneStore" whose title is the store's path key. A
// writer posts what it has committed to the windows of the same title, its own excepted. Other tools post
// nothing: what they change is noticed when the store is next read, at the latest by a timer. So the owners
// hear of every foreign change, by its writer's message or from here.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "mervane/values/change.h"

namespace mervane {

class ChangeHub {
  public:
    // look makes the store read what has changed; it calls one of the Note... functions when something has.
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
    // Another connection has changed the store. The owners hear that all may be new.
    void NoteForeignChange();
    // Another connection has changed that. Its message tells the owners; if none comes, they hear it from
    // here.
    void NoteForeignChange(const TableChange& what);

  private:
    struct Owner {
        TableId table;
        HWND window;
        const void* who;
    };
    struct Heard {
        TableChange what;
        bool isOld; // has waited for its counterpart through a look
    };

    static bool TakeFrom(std::vector<Heard>& list, const TableChange& what);
    static bool IsNew(const Heard& heard);
    static void Age(std::vector<Heard>& list);
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnPeerChange(WPARAM packed, CEOID id);
    void OnAllMayBeNew();
    void OnTimer();
    void TellOwners(const TableChange& what) const;

    std::wstring m_pathKey;
    std::function<void()> m_look;
    std::vector<Owner> m_owners;
    HWND m_window = nullptr;
    // Commits that were read before their message came, and messages that came before their commit was read,
    // each in order.
    std::vector<Heard> m_untold;
    std::vector<Heard> m_told;
    ULONGLONG m_nextLook = 0;   // in ticks
    bool m_allMayBeNew = false; // and the owners are about to hear it
};

} // namespace mervane
