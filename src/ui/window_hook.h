// WindowHook: a procedure in front of a window's own, at most one for a window.
//
// The common controls' subclassing looks up a window property two or three times for each message, and under
// Wine each time is a request to its server: that was half of all requests of a start.
#pragma once

#include <windows.h>

class WindowHook {
  public:
    // What comes to the window. For WM_NCDESTROY, the last, the hook is off already, the window's own
    // procedure follows, and the handler may delete the hook.
    using Handler = LRESULT (*)(void* self, UINT message, WPARAM wParam, LPARAM lParam);

    WindowHook() = default;
    ~WindowHook() { Detach(); }
    WindowHook(const WindowHook&) = delete;
    WindowHook& operator=(const WindowHook&) = delete;

    // self is handed to the handler and outlives the hook. False when there is a hook already.
    [[nodiscard]] bool Attach(HWND window, Handler handler, void* self);
    void Detach();
    // What the window's own procedure makes of a message.
    LRESULT Next(UINT message, WPARAM wParam, LPARAM lParam) const;
    // The object behind a window that is hooked with this handler; null otherwise.
    static void* SelfOf(HWND window, Handler handler);

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
    WNDPROC m_next = nullptr;
    Handler m_handler = nullptr;
    void* m_self = nullptr;
};
