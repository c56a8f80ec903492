// The main window's frame and its remembered placement.
#pragma once

#include <windows.h>

#include "app/registry_store.h"

// Gives the window the desktop's frame: close, minimise, maximise and resize.
void AddDesktopFrame(HWND window);

// Where the window opens, on the screen: the stored place when it can be reached, no larger than the work
// area, otherwise the work area.
RECT PlaceToOpenAt(const RegistryStore& settings);

// Moves the window, which is not to be seen yet, to where it opens.
void PlaceFirst(HWND window, const RegistryStore& settings);

// Shows the window for the first time: where it was left, or over the work area when nothing is stored or
// what is stored lies off every screen. A show command that asks for a minimised, maximised or hidden window
// is followed.
void ShowPlaced(HWND window, int showCommand, const RegistryStore& settings);

void SavePlacement(HWND window, RegistryStore& settings);
