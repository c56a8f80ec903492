// The one window that a program has for each store, as its other copies find it.
#pragma once

#include <windows.h>

#include <cstdint>

#include "mervane/file/turn.h"

// The turn of those copies of a program that open the same store. program is a word.
Turn TurnForStore(const wchar_t* program, uint64_t store);

// A window's number when it shows no store any more, since it is closing.
constexpr uint64_t kNoStore = 1;
// Says of a main window which store it shows, from its creation on; not 0. From then on the other copies find
// it: a turn that is given ends here, before anything that may take long or ask a person.
void SetStoreOfWindow(HWND window, uint64_t store, Turn* turn = nullptr);
// The main window of the class that shows the store; one that does not say which store it shows counts too.
// Null when there is none.
HWND FindWindowOfStore(const wchar_t* windowClass, uint64_t store);
// Brings another copy's window forward as the command says (BringForward). One that is still being made comes
// forward by itself, and does not answer yet; a box that it shows comes forward instead.
void BringOtherForward(HWND window, int showCommand);
// The same with the window of a copy that runs over the store; false when there is none. The turn ends first,
// so that none is held while the other copy answers.
[[nodiscard]] bool BringRunningCopyForward(const wchar_t* windowClass, uint64_t store, int showCommand,
                                           Turn& turn);
