#include <windows.h>

#include "app/journal_app.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int showCommand)
{
    JournalApp& app = App();
    if (!app.InitInstance(instance, showCommand))
        return 0;
    return app.Run();
}
