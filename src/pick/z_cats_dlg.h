// ZCatsDlg: the device's dialog for its master list of categories: their names with use counts, to add to,
// rename, delete (which asks when entries use the category), hide and show again.
#pragma once

#include <windows.h>

class ZCatsDlg {
  public:
    // owner, which may be null, is disabled while the dialog runs.
    explicit ZCatsDlg(HWND owner) : m_owner(owner) {}

    // Runs the dialog. 1: closed with OK, and what was changed is stored, in one transaction. 0: cancelled,
    // and nothing has changed. -1: the categories cannot be opened or read, which a box has said, or the
    // dialog not be made. When they cannot be stored, the dialog says why and stays open.
    INT_PTR DoModal();

  private:
    HWND m_owner;
};
