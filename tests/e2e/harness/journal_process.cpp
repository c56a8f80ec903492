#include "e2e/harness/journal_process.h"

#include <cstdio>

#include "e2e/harness/remote_memory.h"
#include "e2e/harness/remote_window.h"

std::wstring PathBesideTest(const wchar_t* program)
{
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring own(path, length);
    return own.substr(0, own.rfind(L'\\') + 1) + program;
}

namespace {

// A name alone is of a program beside the test's.
std::wstring ProgramPath(const wchar_t* program)
{
    if (wcschr(program, L'\\'))
        return program;
    wchar_t chosen[MAX_PATH];
    const DWORD length = GetEnvironmentVariableW(L"JOURNAL_EXE", chosen, MAX_PATH);
    if (length > 0 && length < MAX_PATH && wcscmp(program, L"journal.exe") == 0)
        return std::wstring(chosen, length);
    return PathBesideTest(program);
}

} // namespace

JournalProcess::JournalProcess(const wchar_t* program, const wchar_t* windowClass)
    : m_path(ProgramPath(program)), m_windowClass(windowClass)
{}

JournalProcess::~JournalProcess()
{
    Kill();
}

bool JournalProcess::Launch(const std::wstring& arguments, WORD showCommand)
{
    Kill();
    std::wstring commandLine = L"\"" + m_path + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = showCommand;
    PROCESS_INFORMATION process{};
    const auto start = [&] {
        return CreateProcessW(m_path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                              nullptr, &startup, &process);
    };
    // Wine's way to say that it did not find its addresses free (tests/support/session.sh).
    if (!start() && (GetLastError() != ERROR_INTERNAL_ERROR || !start())) {
        printf("%ls was not started: error %lu\n", m_path.c_str(), GetLastError());
        return false;
    }
    CloseHandle(process.hThread);
    m_process.reset(process.hProcess);
    m_id = process.dwProcessId;
    return true;
}

// The window of a process that has just ended may still be there, and the identifier of its process be used
// again: what is found has to be there when the new process is idle too.
HWND JournalProcess::WaitForMainWindow(DWORD limit)
{
    const auto isReady = [this] {
        m_mainWindow = FindTopWindow(m_id, m_windowClass.c_str());
        return m_mainWindow && WaitForInputIdle(m_process.get(), kRemoteLimit) == 0 &&
               FindTopWindow(m_id, m_windowClass.c_str()) == m_mainWindow;
    };
    const bool isOver = !WaitFor([&] { return isReady() || !IsRunning(); }, limit);
    if (!IsRunning()) {
        DWORD status = 0;
        GetExitCodeProcess(m_process.get(), &status);
        printf("%ls ended with 0x%08lX before its window was ready\n", m_path.c_str(), status);
    }
    if (isOver || !IsRunning())
        return nullptr;
    KeepThreadForCalls(m_process.get());
    return Activate(m_mainWindow) ? m_mainWindow : nullptr;
}

HWND JournalProcess::Start(const std::wstring& arguments)
{
    return Launch(arguments) ? WaitForMainWindow() : nullptr;
}

bool JournalProcess::IsRunning() const
{
    return m_process && WaitForSingleObject(m_process.get(), 0) == WAIT_TIMEOUT;
}

bool JournalProcess::Close(DWORD limit)
{
    return m_mainWindow && PostMessageW(m_mainWindow, WM_CLOSE, 0, 0) && WaitForEnd(limit);
}

bool JournalProcess::WaitForEnd(DWORD limit) const
{
    return m_process && WaitForSingleObject(m_process.get(), limit) == WAIT_OBJECT_0;
}

bool JournalProcess::RunTaskKill() const
{
    std::wstring line = L"taskkill.exe /pid " + std::to_wstring(m_id);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                        &startup, &process))
        return false;
    CloseHandle(process.hThread);
    const UniqueKernelHandle owner(process.hProcess);
    return WaitForSingleObject(owner.get(), kRemoteLimit) == WAIT_OBJECT_0;
}

void JournalProcess::Kill()
{
    if (IsRunning()) {
        TerminateProcess(m_process.get(), ERROR_PROCESS_ABORTED);
        WaitForSingleObject(m_process.get(), kRemoteLimit);
    }
    m_process.reset();
    m_id = 0;
    m_mainWindow = nullptr;
}

std::optional<DWORD> JournalProcess::ExitCode() const
{
    DWORD code = 0;
    if (!m_process || IsRunning() || !GetExitCodeProcess(m_process.get(), &code))
        return std::nullopt;
    return code;
}
