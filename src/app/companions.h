// The programs that the Go and Help menus start.
#pragma once

#include <windows.h>

struct Companion;

// Null for a command that starts none.
const Companion* CompanionOf(UINT command);
// Starts the companion of a command (CMD_CALENDAR and the like); nothing for any other command.
void LaunchCompanionOf(UINT command, HWND owner);
