// The procedure of a window class whose windows are objects.
#pragma once

#include <windows.h>

#include <utility>

#include "mervane/file/store_waiter.h"
#include "util/window_metrics.h"

// The creation parameter is the object, or that of a Creation. It has a member m_window, which this sets and
// clears, and OnMessage, which gets every message from WM_NCCREATE on except those that are put off
// (PutOffWhileWaiting); it makes this class its friend.
template <typename Window> class WindowProcedure {
  public:
    // While this lives, the first window that is created without a parameter is the object's.
    class Creation {
      public:
        explicit Creation(Window* object) { s_created = object; }
        ~Creation() { s_created = nullptr; }
        Creation(const Creation&) = delete;
        Creation& operator=(const Creation&) = delete;
    };

    static LRESULT CALLBACK Run(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_NCCREATE) {
            auto* created = static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
            if (!created)
                created = std::exchange(s_created, nullptr);
            if (!created)
                return FALSE;
            created->m_window = window;
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
        }
        auto* self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (!self)
            return DefWindowProcW(window, message, wParam, lParam);
        if (mervane::PutOffWhileWaiting(window, message, wParam, lParam))
            return 0;
        if (message == WM_DPICHANGED)
            mervane::NoteDpi(window, wParam);
        mervane::PassToControls(window, message, wParam, lParam);
        const LRESULT result = self->OnMessage(message, wParam, lParam);
        if (message == WM_NCDESTROY) {
            mervane::ForgetDpi(window);
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            self->m_window = nullptr;
        }
        return result;
    }

  private:
    inline static Window* s_created = nullptr;
};
