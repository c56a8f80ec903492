#include "app/journal_app.h"

#include <commctrl.h>

#include "app/main_window.h"
#include "options/password.h"
#include "res/resource.h"
#include "ui/program_icon.h"

namespace {

// A running copy's window, brought forward; false when there is none.
bool BringRunningCopyForward()
{
    HWND running = FindWindowW(kMainWindowClass, nullptr);
    if (!IsWindow(running))
        return false;
    ShowWindow(running, SW_SHOWNORMAL);
    SetForegroundWindow(running);
    UpdateWindow(running);
    return true;
}

bool InitControls()
{
    const INITCOMMONCONTROLSEX controls{sizeof controls,
                                        ICC_LISTVIEW_CLASSES | ICC_DATE_CLASSES | ICC_COOL_CLASSES};
    return InitCommonControlsEx(&controls) != FALSE;
}

// The failed creation has posted the quit message, with which in the queue a message box would close by
// itself.
void ShowCreationError()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    MessageBoxW(nullptr, L"Internal Main Window Creation Error", L"Journal", MB_OK);
}

// The icon, unless the window has one: then null.
UniqueIcon SetIconIfMissing(HWND window, WPARAM which)
{
    return SendMessageW(window, WM_GETICON, which, 0) ? nullptr : SetProgramIcon(window, which);
}

// F1 is an accelerator here, but the system also posts a request for help of its own for it (WM_KEYF1), which
// would ask for the same help a second time.
void DropSystemHelpRequest(const MSG& message)
{
    constexpr UINT kKeyF1 = 0x004D;
    MSG request;
    if (message.message == WM_KEYDOWN && message.wParam == VK_F1)
        PeekMessageW(&request, nullptr, kKeyF1, kKeyF1, PM_REMOVE);
}

} // namespace

HWND JournalApp::MainWindowHandle() const
{
    return m_mainWindow ? m_mainWindow->Handle() : nullptr;
}

int JournalApp::InitInstance(HINSTANCE instance, int showCommand)
{
    m_instance = instance;
    if (BringRunningCopyForward())
        return 0;
    if (!MainWindow::RegisterWindowClass(instance) || !InitControls())
        return 0;
    // While this copy asked, another one may have been unlocked.
    if (!UnlockAtStart(*this) || BringRunningCopyForward())
        return 0;
    m_mainWindow = {new MainWindow, [](MainWindow* window) { delete window; }};
    if (!m_mainWindow->Create(instance)) {
        ShowCreationError();
        return 0;
    }
    m_smallIcon = SetIconIfMissing(MainWindowHandle(), ICON_SMALL);
    m_bigIcon = SetIconIfMissing(MainWindowHandle(), ICON_BIG);
    m_mainWindow->ShowFirst(showCommand);
    UpdateWindow(MainWindowHandle());
    return 1;
}

int JournalApp::Run()
{
    HACCEL accelerators = LoadAcceleratorsW(m_instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (m_mainWindow->TranslateMenuKey(message))
            continue;
        DropSystemHelpRequest(message);
        if (!TranslateAcceleratorW(MainWindowHandle(), accelerators, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}
