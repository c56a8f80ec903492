// The menus of the command bar's drop-down buttons.
#pragma once

#include "util/owners.h"

// Null for a command that is no drop-down button.
UniqueMenu PickerMenu(int button);
