// A program's main window where it was left: its place is kept in the settings.
#pragma once

#include <windows.h>

#include <optional>

#include "settings/registry_store.h"

struct WindowPlace {
    RECT rect; // on the screen, of the window that is not maximised
    bool maximized;
};

// How wide the part of a resizable frame is, in pixels, that Windows 10 and 11 paint nothing of, left, right
// and below: it belongs to the window's place, but is not seen. A null window: at the system's resolution.
LONG ClearFrame(HWND window);
// The window's place whose visible part fills the area.
RECT PlaceToFill(const RECT& area, LONG clearFrame);

// The stored place when it can be reached, what is seen of it no larger than its screen.
std::optional<WindowPlace> LoadPlacement(const RegistryStore& settings);

// Gives the window, which is not to be seen yet, the desktop's frame (close, minimise, maximise and resize)
// and the place where it opens. True when it was left maximised there.
bool FrameAndPlace(HWND window, const RegistryStore& settings);

// For WM_WINDOWPOSCHANGING of a window that is created visible: it stays hidden until it is shown as it was
// left.
void KeepHidden(WINDOWPOS& position);

// Shows the window for the first time: as it was left, unless the show command asks for a minimised,
// maximised or hidden window. One that is minimised comes back as it was left.
void ShowAsLeft(HWND window, int showCommand, bool leftMaximized);

// Brings a window to a place on the screen, as WM_DPICHANGED suggests one.
void TakePlace(HWND window, const RECT& place);

void SavePlacement(HWND window, RegistryStore& settings);
