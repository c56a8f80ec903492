// The one place where a command of the main window is born: its handler and when it is enabled. Menu, buttons
// and accelerators refer to its identifier alone.
#pragma once

#include <windows.h>

class MainBands;
class MainWindow;

struct Command {
    UINT id;
    void (*run)(MainWindow& window, UINT command);
};

// Null for an identifier that is no command.
const Command* FindCommand(UINT id);

// The rules for Delete, Copy, Cut, Edit and Paste.
struct SelectionState {
    bool hasSelection;    // at least one entry is selected
    bool hasCurrentEntry; // there is an entry that the editor would open
    bool flag;            // the selection flag
};
void EnableEntryCommands(MainBands& bands, const SelectionState& state);
