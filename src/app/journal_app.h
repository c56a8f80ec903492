// JournalApp: the one application object. It is the settings store and holds the journal database, the main
// window and the filter.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "data/filter_state.h"
#include "data/session.h"
#include "mervane/db_journal.h"
#include "settings/registry_store.h"
#include "util/owners.h"

class MainWindow;

class JournalApp : public RegistryStore {
  public:
    // Opens the settings and constructs the journal database and the main window, which opens the database
    // when it is created.
    JournalApp();
    ~JournalApp() override;

    // 1 to run, 0 to end the process.
    int InitInstance(HINSTANCE instance, int showCommand);
    // Once the main window is open: tells which files were set aside, and offers what an earlier program has
    // left unsaved.
    void TellWhatWasFound();
    // The message loop, and behind it a box where closing the store has failed; the wParam of the final
    // WM_QUIT.
    int Run();

    HINSTANCE Instance() const { return m_instance; }
    HWND MainWindowHandle() const;
    DbJournal& Journal() { return *m_journal; }
    FilterState& Filter() { return m_filter; }
    Session GetSession() { return {*this, *m_journal, m_filter}; }

  private:
    // The main window: made here, or another copy has one over the same store, or it cannot be made.
    enum class Made { Here, Elsewhere, Failed };
    Made MakeMainWindow(uint64_t store);
    void ConstructMainWindow();

    std::unique_ptr<DbJournal> m_journal; // for this object's whole life
    // The deleter is a pointer so that this header, which every room includes, need not know the main window.
    std::unique_ptr<MainWindow, void (*)(MainWindow*)> m_mainWindow;
    bool m_hasTried = false; // to make the window of m_mainWindow
    HINSTANCE m_instance = nullptr;
    FilterState m_filter;
    UniqueIcon m_smallIcon;
    UniqueIcon m_bigIcon;
};

// The application object.
JournalApp& App();
