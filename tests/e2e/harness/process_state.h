// What another process is doing, for the output of a test that waits for it in vain.
#pragma once

#include <windows.h>

// Whether it runs, the time that it has worked, and its top-level windows, hidden ones too.
void PrintStateOf(DWORD process);
