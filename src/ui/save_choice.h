// Choosing a file to be written.
#pragma once

#include <windows.h>
#include <commdlg.h>

// Shows the system's dialog until a file is chosen that can be written, with a box over its owner for each
// that cannot; what is in a file that is there stays. The current folder stays, whatever the dialog does with
// it. False when the person cancels.
[[nodiscard]] bool ChooseFileToWrite(OPENFILENAMEW* choice);
