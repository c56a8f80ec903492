#include "started_program.h"

#include <commctrl.h>

#include "measure.h"
#include "stores.h"

namespace bench {

namespace {

constexpr double kLimit = 60e6; // microseconds
constexpr DWORD kAnswerLimit = 1000;

std::wstring FromThis(const std::wstring& path)
{
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const std::wstring program = own;
    return program.substr(0, program.find_last_of(L'\\') + 1) + path;
}

// -1 while the window does not answer.
LRESULT Ask(HWND window, UINT message)
{
    DWORD_PTR result = 0;
    return SendMessageTimeoutW(window, message, 0, 0, SMTO_BLOCK, kAnswerLimit, &result)
               ? static_cast<LRESULT>(result)
               : -1;
}

bool IsPainted(HWND window)
{
    return IsWindowVisible(window) && Ask(window, WM_NULL) == 0 && !GetUpdateRect(window, nullptr, FALSE);
}

} // namespace

HWND FindPainted(const Awaited& awaited)
{
    HWND window = FindWindowW(awaited.windowClass, nullptr);
    if (!window || !IsPainted(window))
        return nullptr;
    if (awaited.rows < 0)
        return window;
    HWND list = FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr);
    return list && Ask(list, LVM_GETITEMCOUNT) == awaited.rows && IsPainted(list) ? window : nullptr;
}

HWND WaitUntilPainted(const Awaited& awaited)
{
    const Stopwatch watch;
    while (watch.Microseconds() < kLimit) {
        if (HWND window = FindPainted(awaited))
            return window;
        Sleep(1);
    }
    Fail("a program's window does not come");
}

StartedProgram::StartedProgram(const std::wstring& path, const std::wstring& arguments,
                               const Awaited& awaited)
{
    const std::wstring program = FromThis(path);
    std::wstring commandLine = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const Stopwatch watch;
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        Fail(("a program cannot be started, error " + std::to_string(GetLastError())).c_str());
    m_window = WaitUntilPainted(awaited);
    m_time = watch.Microseconds();
    m_process.reset(process.hProcess);
    CloseHandle(process.hThread);
}

StartedProgram::~StartedProgram()
{
    PostMessageW(m_window, WM_CLOSE, 0, 0);
    if (WaitForSingleObject(m_process.get(), static_cast<DWORD>(kLimit / 1000)) != WAIT_OBJECT_0)
        Fail("a program does not end");
}

} // namespace bench
