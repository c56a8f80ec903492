// The dialog in which the filter's months, range and categories are chosen.
#pragma once

#include <windows.h>

#include "data/session.h"

// Shows the filter in one of its two modes and puts what is chosen in force; the user may change the mode.
// False when the dialog was cancelled: the filter is as it was. The caller shows the list anew.
bool OpenFilterDialog(const Session& session, HWND owner, bool categoriesMode);
