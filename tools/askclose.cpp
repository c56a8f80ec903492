// askclose.exe: asks the journal's window over the store that MERVANE_STORE names, or the user's own, to
// close. Ends with 0 when there is one, whatever it makes of it, and with 1 when there is none.
#include "app/main_window.h"
#include "mervane/file/store_path.h"
#include "ui/store_window.h"

int wmain()
{
    HWND window = FindWindowOfStore(kMainWindowClass, mervane::StoreNumber(mervane::StorePath()));
    return window && PostMessageW(window, WM_CLOSE, 0, 0) ? 0 : 1;
}
