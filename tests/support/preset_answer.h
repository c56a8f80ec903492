// The answer that the Enter key gives to message boxes of this thread that open while this lives.
#pragma once

#include <windows.h>

#include "support/thread_hook.h"

class PresetAnswer {
  public:
    PresetAnswer() { s_id = 0; }
    PresetAnswer(const PresetAnswer&) = delete;
    PresetAnswer& operator=(const PresetAnswer&) = delete;

    int Id() const { return s_id; } // of the last box; 0 before the first one

  private:
    // The button that has the keyboard is the one that Enter presses.
    static LRESULT CALLBACK Note(int code, WPARAM wParam, LPARAM lParam)
    {
        constexpr int kText = 0xFFFF; // of a message box
        HWND window = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_SETFOCUS && window && GetDlgItem(GetParent(window), kText))
            s_id = GetDlgCtrlID(window);
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline int s_id = 0;
    const ThreadHook m_hook{WH_CBT, Note};
};
