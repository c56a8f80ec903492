// The Options dialog (template 103): preferences and password.
#pragma once

#include <windows.h>

void RunOptions(HWND owner);
