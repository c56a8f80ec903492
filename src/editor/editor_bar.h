// The editor's command bar: a tool bar with its images and tool tips.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "editor/value_pickers.h"
#include "ui/bars/button_rows.h"
#include "util/owners.h"

class EditorBar {
  public:
    // Makes the bar with its buttons, a child of parent without a size yet. False on failure.
    [[nodiscard]] bool Create(HINSTANCE instance, HWND parent, HFONT font);
    HWND Window() const { return m_window; }
    // The window has another resolution, and this font.
    void OnResolutionChanged(HFONT font);

    // How a button shows its value: text, image and width.
    void SetFace(int command, const ButtonFace& face);

    void Enable(int command, bool enable);
    void Check(int command, bool check);

    std::vector<ButtonExtent> Buttons() const;
    int RowHeight() const;
    // Breaks the buttons into rows of at most this width.
    void BreakInto(int width);

    // For TBN_GETINFOTIP: the button's tool tip; empty for the drop-down buttons and for no button.
    static const wchar_t* Tooltip(int command);

  private:
    int ImageHeight() const;
    void SetImages(HINSTANCE instance);
    bool AddButtons();
    void SetSizes();
    int& WidthOf(int command);
    void SetWrap(int index, bool wrap);

    HWND m_window = nullptr;   // the parent destroys it
    std::vector<int> m_widths; // of the buttons and separators, at 96 dpi
    UniqueImageList m_images;
    UniqueImageList m_greyedImages;
};
