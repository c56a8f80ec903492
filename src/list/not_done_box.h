// Tells a person what a command has not done.
#pragma once

#include <windows.h>

#include "mervane/file/trouble.h"

// A box with an owner. what is a sentence without its full stop; why and that nothing is lost follow.
void TellNotDone(HWND owner, const wchar_t* what, StoreTrouble trouble);
