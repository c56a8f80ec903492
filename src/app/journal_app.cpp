#include "app/journal_app.h"

#include "app/main_window.h"

JournalApp::JournalApp() : m_journal(std::make_unique<DbJournal>()), m_mainWindow(nullptr, nullptr)
{
    Open(kRegistryPath);
    ConstructMainWindow();
}

// An object has one try to make its window: what has failed may have left it half built.
void JournalApp::ConstructMainWindow()
{
    m_mainWindow = {new MainWindow(GetSession()), [](MainWindow* window) { delete window; }};
    m_hasTried = false;
}

// The database goes first, then the main window, then the settings.
JournalApp::~JournalApp()
{
    m_journal.reset();
    m_mainWindow.reset();
}

JournalApp& App()
{
    static JournalApp app;
    return app;
}
