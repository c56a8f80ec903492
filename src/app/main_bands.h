// The main window's command bands: the menu band and the button band.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>

#include "app/registry_store.h"
#include "util/owners.h"

class MainBands {
  public:
    // Builds everything as the settings say. False when the bands, the menu bar or the buttons cannot be
    // made.
    bool Create(HINSTANCE instance, HWND parent, const RegistryStore& settings);

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
    bool CreateBands(HINSTANCE instance, HWND parent, const RegistryStore& settings);
    bool CreateMenu(HINSTANCE instance);
    bool CreateButtons(HINSTANCE instance);
    void AddRunTimeMenuItems();

    UniqueImageList m_images;
    std::wstring m_filterText;
    HWND m_buttonBar = nullptr;
    HWND m_bands = nullptr;
    HWND m_menuBar = nullptr;
};
