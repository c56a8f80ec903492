#include "ui/window_timer.h"

bool WindowTimer::Start(HWND window, UINT milliseconds)
{
    if (!SetTimer(window, reinterpret_cast<UINT_PTR>(this), milliseconds, OnTimer))
        return false;
    if (m_window != window)
        Stop();
    m_window = window;
    return true;
}

void WindowTimer::Stop()
{
    if (m_window)
        KillTimer(m_window, reinterpret_cast<UINT_PTR>(this));
    m_window = nullptr;
}

void CALLBACK WindowTimer::OnTimer(HWND, UINT, UINT_PTR self, DWORD)
{
    reinterpret_cast<WindowTimer*>(self)->m_work();
}

bool IsInputWaiting()
{
    return HIWORD(GetQueueStatus(QS_KEY | QS_MOUSEBUTTON)) != 0;
}
