#pragma once

#include <windows.h>

#include <functional>
#include <utility>

#include "support/thread_hook.h"

// Does something when a message box comes up, before it is answered.
class WhileAsked {
  public:
    explicit WhileAsked(std::function<void()> action) { s_action = std::move(action); }
    WhileAsked(const WhileAsked&) = delete;
    WhileAsked& operator=(const WhileAsked&) = delete;

  private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam)
    {
        wchar_t name[16] = L"";
        GetClassNameW(reinterpret_cast<HWND>(wParam), name, 16);
        if (code == HCBT_ACTIVATE && s_action && wcscmp(name, L"#32770") == 0)
            std::exchange(s_action, nullptr)();
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline std::function<void()> s_action;
    const ThreadHook m_hook{WH_CBT, Hook};
};
