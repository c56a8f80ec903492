// The menus of the command bar's drop-down buttons, and how a button shows what was chosen.
#pragma once

#include "editor/value_pickers.h"
#include "util/owners.h"

// Null for a command that is no drop-down button.
UniqueMenu PickerMenu(int button);
// button is a drop-down button; valueOrId a stored value (priority and sensitivity only) or a menu id.
ButtonFace PickerFace(int button, int valueOrId);
