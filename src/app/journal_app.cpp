#include "app/journal_app.h"

#include "ui/work_area.h"

JournalApp::JournalApp() : m_journal(std::make_unique<DbJournal>()), m_mainWindow(nullptr, nullptr)
{
    Open(kRegistryPath);
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

int WorkAreaRight()
{
    return WorkArea().right;
}
int WorkAreaBottom()
{
    return WorkArea().bottom;
}
