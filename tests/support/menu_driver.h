// Works the next menu that opens.
#pragma once

#include <windows.h>

#include <functional>

// Waits for the next menu of this thread and works it: the action closes it.
class MenuDriver {
  public:
    explicit MenuDriver(std::function<void(HMENU)> action) : m_action(std::move(action))
    {
        s_current = this;
        m_timer = SetTimer(nullptr, 0, 10, OnTimer);
    }
    ~MenuDriver()
    {
        KillTimer(nullptr, m_timer);
        s_current = nullptr;
    }
    MenuDriver(const MenuDriver&) = delete;
    MenuDriver& operator=(const MenuDriver&) = delete;

    bool Ran() const { return m_ran; }
    RECT Place() const { return m_place; }

  private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD)
    {
        constexpr UINT kGetMenu = 0x01E1; // MN_GETHMENU
        HWND window = FindWindowW(L"#32768", nullptr);
        if (!window || !IsWindowVisible(window) || !s_current || s_current->m_ran)
            return;
        s_current->m_ran = true;
        GetWindowRect(window, &s_current->m_place);
        s_current->m_action(reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0)));
    }

    static inline MenuDriver* s_current = nullptr;
    std::function<void(HMENU)> m_action;
    UINT_PTR m_timer = 0;
    bool m_ran = false;
    RECT m_place{};
};
