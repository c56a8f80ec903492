// The main window's command bands: the menu band and the button band.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <array>
#include <string>

#include "app/band_layout.h"
#include "settings/registry_store.h"
#include "util/owners.h"

class MainBands {
  public:
    // Builds everything as the settings say. False when the bands, the menu bar or the buttons cannot be
    // made.
    bool Create(HINSTANCE instance, HWND parent, const RegistryStore& settings);

    // Builds everything anew for the resolution that the window has now, with the layout that it had. False
    // as for Create. What was enabled is to be told again.
    bool Rebuild();

    HWND Handle() const { return m_bands; }
    HWND MenuBar() const { return m_menuBar; }
    HWND ButtonBar() const { return m_buttonBar; }
    int Height() const;
    void Resize();

    // A command's button and menu item together, or one of them.
    void EnableCommand(UINT command, bool enable);
    void EnableButton(UINT command, bool enable);
    void EnableMenuCommand(UINT command, bool enable);
    bool IsMenuCommandEnabled(UINT command) const;

    // What the filter's button reads; "None" at first.
    void SetFilterText(const std::wstring& text);

    // Answers TBN_GETINFOTIPW of the button bar.
    void OnGetInfoTip(NMTBGETINFOTIPW* tip) const;

  private:
    struct BandState {
        REBARBANDINFOW info{};
        bool isMaximized = false;
    };
    using BandStates = std::array<BandState, kBandCount>;

    BandStates StatesNow(int dpi) const;
    bool Build(const BandStates& bands);
    bool CreateBands(const BandStates& bands);
    bool CreateMenu();
    bool CreateButtons();
    void AddRunTimeMenuItems();
    void ShowFilterText();

    HINSTANCE m_instance = nullptr;
    HWND m_parent = nullptr;
    int m_dpi = 0; // that everything was built for
    UniqueImageList m_images;
    std::wstring m_filterText = L"None";
    HWND m_buttonBar = nullptr;
    HWND m_bands = nullptr;
    HWND m_menuBar = nullptr;
};
