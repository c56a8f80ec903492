#include "app/band_layout.h"

#include "res/resource.h"
#include "ui/bars/command_bands.h"
#include "ui/screen/scale.h"

namespace {

// One band's settings: their names and what they read as when missing.
struct BandSettings {
    UINT id;
    const wchar_t* styleName;
    DWORD styleDefault;
    const wchar_t* widthName;
    DWORD widthDefault;           // pixels at 96 dpi
    const wchar_t* maximizedName; // default 0
};

constexpr BandSettings kBands[kBandCount] = {
    {IDC_MENU_BAND, L"mstyle", 256, L"mrestore", 155, L"mmax"},
    {IDC_BUTTON_BAND, L"tstyle", 128, L"trestore", 140, L"tmax"},
};

} // namespace

REBARBANDINFOW LoadBand(int band, const RegistryStore& settings)
{
    const BandSettings& names = kBands[band];
    REBARBANDINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = RBBIM_STYLE | RBBIM_ID | RBBIM_SIZE;
    info.wID = names.id;
    info.fStyle = settings.GetNumber(kSettings, names.styleName, names.styleDefault);
    // As stored, which is at the system's resolution; the default is given for 96 dpi.
    info.cx = settings.GetNumber(kSettings, names.widthName,
                                 static_cast<DWORD>(Scale(static_cast<int>(names.widthDefault))));
    return info;
}

bool IsBandStoredMaximized(int band, const RegistryStore& settings)
{
    return settings.GetNumber(kSettings, kBands[band].maximizedName, 0) != 0;
}

void SaveBandLayout(HWND bands, BandLayoutParts parts, RegistryStore& settings)
{
    for (const BandSettings& names : kBands) {
        const LRESULT index = SendMessageW(bands, RB_IDTOINDEX, names.id, 0);
        COMMANDBANDSRESTOREINFO info{};
        info.cbSize = sizeof info;
        if (index < 0 || !CommandBands_GetRestoreInformation(bands, static_cast<UINT>(index), &info) ||
            info.wID == 0)
            continue;
        settings.SetNumber(kSettings, names.styleName, info.fStyle);
        settings.SetNumber(kSettings, names.widthName,
                           static_cast<DWORD>(StoredWidth(bands, static_cast<int>(info.cxRestored))));
        if (parts == BandLayoutParts::All)
            settings.SetNumber(kSettings, names.maximizedName, info.fMaximized ? 1 : 0);
    }
}
