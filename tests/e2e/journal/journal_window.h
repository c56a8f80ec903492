// What the tests of the built journal ask of its windows.
#pragma once

#include <string>

#include "e2e/harness/input.h"
#include "e2e/harness/journal_test.h"
#include "e2e/harness/message_box.h"
#include "e2e/harness/remote_list_view.h"
#include "e2e/harness/remote_menu.h"
#include "e2e/harness/remote_toolbar.h"
#include "e2e/harness/remote_window.h"
#include "e2e/harness/settings.h"
#include "e2e/harness/store_reader.h"
#include "mervane/db_journal.h"
#include "res/resource.h"

class JournalWindowTest : public JournalTest {
  protected:
    HWND Window() const { return m_journal.MainWindow(); }
    RemoteListView List() const { return RemoteListView(ChildOfClass(Window(), L"SysListView32")); }
    RemoteToolbar Buttons() const;
    // How many rows the list shows, once it shows that many; otherwise what it shows at the end of the wait.
    bool ShowsRows(int count) const;
    // The editor, once it is open and has the keyboard; null otherwise.
    HWND WaitForEditor() const;
    // Writes an entry before the program is started.
    CEOID AddEntry(const std::wstring& subject, uint64_t date = 0) const;
};

// 2026-11-21 12:00 as a FILETIME count of local wall-clock time.
constexpr uint64_t kNoon = 134'397'360'000'000'000;
