// What SQLite's results mean to a person.
#pragma once

#include "mervane/file/trouble.h"

namespace mervane {

// code: an extended result code; systemError: the system's error behind it, which counts for a failed access
// to the file. A constraint that refuses a value is no trouble but a "no".
StoreTrouble TroubleOf(int code, unsigned long systemError);
// Of the system's error alone; never None.
StoreTrouble TroubleOfSystem(unsigned long error);

} // namespace mervane
