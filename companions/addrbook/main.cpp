#include <windows.h>
#include <commctrl.h>

#include "addrbook/address_window.h"
#include "addrbook/resource.h"
#include "mervane/file/store_path.h"
#include "mervane/file/store_waiter.h"
#include "ui/paint_wait.h"
#include "ui/store_window.h"
#include "ui/timer_faults.h"
#include "util/program_search.h"

namespace {

enum class Made { Here, Elsewhere, Failed };

Made MakeWindow(HINSTANCE instance, int showCommand, addrbook::AddressWindow& window)
{
    const uint64_t store = mervane::StoreNumber(mervane::StorePath());
    Turn turn = TurnForStore(L"AddressBook", store);
    if (BringRunningCopyForward(addrbook::kAddressWindowClass, store, SW_SHOW, turn))
        return Made::Elsewhere;
    if (!window.Create(instance, &turn))
        return Made::Failed;
    window.ShowFirst(showCommand);
    UpdateWindow(window.Handle());
    return Made::Here;
}

int Run(HINSTANCE instance, addrbook::AddressWindow& window)
{
    HACCEL keys = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_ADDRESS_KEYS));
    const int code = window.Run(keys);
    window.TellNotKept();
    return code;
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand)
{
    UseLibrariesOfSystemOnly();
    EndOnTimerFaults();
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS};
    if (!InitCommonControlsEx(&controls) || !addrbook::AddressWindow::RegisterWindowClass(instance))
        return 0;
    SetStoreWaiter(PaintWhileWaiting);
    addrbook::AddressWindow window;
    switch (MakeWindow(instance, showCommand, window)) {
    case Made::Here: window.TellSetAside(); return Run(instance, window);
    case Made::Elsewhere: return 0;
    default: window.TellFailure(); return 1;
    }
}
