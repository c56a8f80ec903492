// FilterState: the one filter of the application.
#pragma once

#include <windows.h>

#include "mervane/values/ce_types.h"
#include "mervane/z_stack.h"

struct FilterState {
    SYSTEMTIME rangeStart{};
    SYSTEMTIME rangeEnd{};
    DWORD monthMask = 0; // bit m: month m + 1
    bool active = false;
    bool categoriesMode = false; // otherwise: date
    bool rangeMode = false;      // in date mode: a range, otherwise months
    ZStack categories;
};
