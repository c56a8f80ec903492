// The layout of the two command bands in the settings.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "app/registry_store.h"

// One band's settings: their names and what they read as when missing.
struct BandSettings {
    UINT id;
    const wchar_t* styleName;
    DWORD styleDefault;
    const wchar_t* widthName;
    DWORD widthDefault;           // pixels at 96 dpi
    const wchar_t* maximizedName; // default 0
};
constexpr int kBandCount = 2;
const BandSettings& BandSettingsOf(int band); // 0: menu band, 1: button band

// The description of a band as CommandBands_AddBands takes it. Any stored number is taken; a width no screen
// has is clipped by the bands themselves.
REBARBANDINFOW LoadBand(int band, const RegistryStore& settings);
bool IsBandStoredMaximized(int band, const RegistryStore& settings);

enum class BandLayoutParts { StyleAndWidth, All };
void SaveBandLayout(HWND bands, BandLayoutParts parts, RegistryStore& settings);
