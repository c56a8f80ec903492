// The layout of the two command bands in the settings.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "settings/registry_store.h"

constexpr int kBandCount = 2; // 0: menu band, 1: button band

// The description of a band as CommandBands_AddBands takes it. Any stored number is taken; a width no screen
// has is clipped by the bands themselves.
REBARBANDINFOW LoadBand(int band, const RegistryStore& settings);
bool IsBandStoredMaximized(int band, const RegistryStore& settings);

enum class BandLayoutParts { StyleAndWidth, All };
void SaveBandLayout(HWND bands, BandLayoutParts parts, RegistryStore& settings);
