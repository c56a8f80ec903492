// States that hold for a scope and end with it.
#pragma once

#include <windows.h>

// A window paints nothing; at the end it is painted once, as a whole. Not to be nested for one window.
class ScopedRedrawPause {
  public:
    explicit ScopedRedrawPause(HWND window) : m_window(window)
    {
        SendMessageW(m_window, WM_SETREDRAW, FALSE, 0);
    }
    ~ScopedRedrawPause()
    {
        SendMessageW(m_window, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(m_window, nullptr, TRUE);
    }
    ScopedRedrawPause(const ScopedRedrawPause&) = delete;
    ScopedRedrawPause& operator=(const ScopedRedrawPause&) = delete;

  private:
    HWND m_window;
};

// A GDI object selected into a device context; the one before comes back at the end.
class ScopedSelectObject {
  public:
    ScopedSelectObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(SelectObject(dc, object)) {}
    ~ScopedSelectObject()
    {
        if (m_previous)
            SelectObject(m_dc, m_previous);
    }
    ScopedSelectObject(const ScopedSelectObject&) = delete;
    ScopedSelectObject& operator=(const ScopedSelectObject&) = delete;

  private:
    HDC m_dc;
    HGDIOBJ m_previous;
};
