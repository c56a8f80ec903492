#include <windows.h>

#include "app/journal_app.h"
#include "mervane/file/store_waiter.h"
#include "ui/paint_wait.h"
#include "ui/timer_faults.h"
#include "util/program_search.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand)
{
    UseLibrariesOfSystemOnly();
    EndOnTimerFaults();
    SetStoreWaiter(PaintWhileWaiting);
    JournalApp& app = App();
    if (!app.InitInstance(instance, showCommand))
        return 0;
    app.TellWhatWasFound();
    return app.Run();
}
