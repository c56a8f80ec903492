// Adornments: the "?" and the close button at the right of the bands.
#pragma once

#include <windows.h>

#include <memory>

#include "ui/window_hook.h"
#include "util/owners.h"

class Adornments {
  public:
    // A bar beside the rebar with the buttons of the flags (kAdornHelp, kAdornClose). Its commands and
    // notifications go to the rebar. Null on failure.
    static std::unique_ptr<Adornments> Create(HINSTANCE instance, HWND rebar, DWORD flags);
    ~Adornments();
    Adornments(const Adornments&) = delete;
    Adornments& operator=(const Adornments&) = delete;

    HWND Window() const { return m_window; }
    int Width() const;
    void Place(int x, int height) const;
    // The bar's WM_COMMAND: WM_HELP is sent to the bands' parent, WM_CLOSE posted.
    void OnCommand(int command) const;

  private:
    Adornments() = default;
    static LRESULT HandleMessage(void* self, UINT message, WPARAM wParam, LPARAM lParam);
    bool AddButtons(DWORD flags);
    void PaintBackground(HDC dc) const;

    HWND m_window = nullptr;
    WindowHook m_hook;
    HWND m_rebar = nullptr;
    UniqueImageList m_images;
};
