// Menus of another process. A menu's data can be read in its own process only, so each question is a call
// there.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "e2e/harness/remote_memory.h"
#include "e2e/harness/wait.h"

struct RemoteMenuItem {
    UINT id = 0;       // of a command; 0 for a separator
    std::wstring text; // with its mnemonic and, after a tab, its key
    bool enabled = false;
    bool checked = false;
    bool separator = false;
    HMENU submenu = nullptr;
};

class RemoteMenu {
  public:
    // owner is any window of the process.
    RemoteMenu(HWND owner, HMENU menu);

    explicit operator bool() const { return m_menu != nullptr; }
    HMENU Handle() const { return m_menu; }
    std::vector<RemoteMenuItem> Items() const;
    // The item of a command, looked for in all submenus; one with id 0 when there is none.
    RemoteMenuItem Find(UINT id) const;
    // The middle of an item of an open popup on the screen.
    POINT ItemPoint(int position) const;

  private:
    RemoteMenuItem Item(int position) const;

    HWND m_owner;
    UniqueKernelHandle m_process;
    HMENU m_menu;
};

// The menu bar of a window that has one as a window's property.
RemoteMenu MenuBarOf(HWND window);

// The popup menu that a process shows, once it shows one; null after the limit.
[[nodiscard]] HWND WaitForPopup(DWORD process, DWORD limit = kRemoteLimit);
RemoteMenu MenuOfPopup(HWND popup);
// Chooses the command from the open popup with the mouse, and waits until the menu is gone.
[[nodiscard]] bool ChooseFromPopup(HWND popup, UINT id);
// Closes every open popup with Esc.
[[nodiscard]] bool ClosePopups(DWORD process);
