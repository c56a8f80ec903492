// The About box.
#pragma once

#include <windows.h>

void ShowAboutDialog(HINSTANCE instance, HWND owner);
