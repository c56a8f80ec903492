// JournalProcess: the built program as a person starts it, in a process of its own.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "e2e/harness/wait.h"
#include "util/owners.h"

std::wstring PathBesideTest(const wchar_t* program);

// Its store is what MERVANE_STORE names when it starts (TestStore sets that), its settings are the registry's
// (TestRegistry empties them). A process that still runs when this goes is killed.
class JournalProcess {
  public:
    // A path, or the name of a program that lies beside the test's; the environment variable JOURNAL_EXE
    // names another journal.exe.
    explicit JournalProcess(const wchar_t* program = L"journal.exe", const wchar_t* windowClass = L"Journal");
    ~JournalProcess();
    JournalProcess(const JournalProcess&) = delete;
    JournalProcess& operator=(const JournalProcess&) = delete;

    // Starts the process without waiting for a window; it can be started again once it has ended. showCommand
    // is a SW_ constant for the start-up information.
    [[nodiscard]] bool Launch(const std::wstring& arguments = {}, WORD showCommand = SW_SHOWNORMAL);
    // The visible main window, in the foreground and idle; null when there is none within the limit.
    [[nodiscard]] HWND WaitForMainWindow(DWORD limit = kRemoteLimit);
    // Both.
    [[nodiscard]] HWND Start(const std::wstring& arguments = {});

    HWND MainWindow() const { return m_mainWindow; }
    HANDLE Handle() const { return m_process.get(); }
    DWORD Id() const { return m_id; }
    bool IsRunning() const;

    // Asks the main window to close and waits for the end; true when the process ended within the limit.
    [[nodiscard]] bool Close(DWORD limit = kRemoteLimit);
    [[nodiscard]] bool WaitForEnd(DWORD limit = kRemoteLimit) const;
    // Has the system's own program ask all its windows to close; false when that program cannot be run.
    [[nodiscard]] bool RunTaskKill() const;
    // Ends it without asking, as a power cut would.
    void Kill();
    // Nothing while it runs.
    std::optional<DWORD> ExitCode() const;

  private:
    std::wstring m_path;
    std::wstring m_windowClass;
    UniqueKernelHandle m_process;
    DWORD m_id = 0;
    HWND m_mainWindow = nullptr;
};
