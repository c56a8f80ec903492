// What the end-to-end tests of the help share.
#pragma once

#include <string>

#include "e2e/harness/input.h"
#include "e2e/harness/journal_process.h"
#include "e2e/harness/remote_window.h"
#include "help/resource.h"

constexpr const wchar_t* kHelpViewer = L"JournalHelp"; // the window's class

// The help's window, whoever has started it; null while there is none.
inline HWND HelpViewer()
{
    HWND window = FindWindowW(kHelpViewer, nullptr);
    return window && IsWindowVisible(window) ? window : nullptr;
}

// Waits until the help shows a topic whose text begins so.
inline bool HelpShows(const std::wstring& title)
{
    return WaitFor([&] {
        HWND window = HelpViewer();
        return window && TextOf(Control(window, IDC_TEXT)).starts_with(title);
    });
}

// Waits until the help has been in front for longer than it looks after that itself, so that it leaves
// another window that comes forward then where it is.
inline bool HelpStaysInFront()
{
    constexpr ULONGLONG kLooks = 700; // milliseconds
    ULONGLONG since = GetTickCount64();
    return WaitFor([&] {
        if (!HelpViewer() || GetForegroundWindow() != HelpViewer())
            since = GetTickCount64();
        return GetTickCount64() - since > kLooks;
    });
}

inline bool CloseHelp()
{
    HWND window = HelpViewer();
    if (!window)
        return true;
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const UniqueKernelHandle handle(OpenProcess(SYNCHRONIZE, FALSE, process));
    PostMessageW(window, WM_CLOSE, 0, 0);
    return handle && WaitForSingleObject(handle.get(), kRemoteLimit) == WAIT_OBJECT_0;
}
