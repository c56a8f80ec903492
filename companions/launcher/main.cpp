// The entry of all four programs; LAUNCHER_ERRAND says which one this is.
#include <windows.h>

#include "launcher/hand_over.h"
#include "util/program_search.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int)
{
    UseLibrariesOfSystemOnly();
    return RunErrand(LAUNCHER_ERRAND);
}
