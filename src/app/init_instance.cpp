#include "app/journal_app.h"
#include "app/main_window.h"

HWND JournalApp::MainWindowHandle() const { return m_mainWindow ? m_mainWindow->Handle() : nullptr; }

int JournalApp::InitInstance(HINSTANCE instance, int)
{
    m_instance = instance;
    return 0;
}

int JournalApp::Run() { return 0; }
