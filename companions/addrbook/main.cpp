#include <windows.h>
#include <commctrl.h>

#include "addrbook/address_window.h"
#include "addrbook/resource.h"
#include "mervane/store_waiter.h"
#include "ui/paint_wait.h"

namespace {

bool BringRunningCopyForward()
{
    HWND running = FindWindowW(addrbook::kAddressWindowClass, nullptr);
    if (!running)
        return false;
    if (IsIconic(running))
        ShowWindow(running, SW_RESTORE);
    SetForegroundWindow(GetLastActivePopup(running));
    return true;
}

int Run(HINSTANCE instance, addrbook::AddressWindow& window)
{
    HACCEL keys = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ADDRESS_KEYS));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        HWND main = window.Handle();
        if (main && (window.TranslateKey(message) || TranslateAcceleratorW(main, keys, &message) ||
                     IsDialogMessageW(main, &message)))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand)
{
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS};
    if (BringRunningCopyForward() || !InitCommonControlsEx(&controls) ||
        !addrbook::AddressWindow::RegisterWindowClass(instance))
        return 0;
    SetStoreWaiter(PaintWhileWaiting);
    addrbook::AddressWindow window;
    if (!window.Create(instance))
        return 1;
    window.ShowFirst(showCommand);
    UpdateWindow(window.Handle());
    return Run(instance, window);
}
