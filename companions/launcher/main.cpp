// The entry of all four programs; LAUNCHER_ERRAND says which one this is.
#include <windows.h>

#include "launcher/hand_over.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int)
{
    return RunErrand(LAUNCHER_ERRAND);
}
