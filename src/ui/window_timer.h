// WindowTimer: does its work again and again, in messages that come when no other message and no input waits.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

class WindowTimer {
  public:
    explicit WindowTimer(std::function<void()> work) : m_work(std::move(work)) {}
    ~WindowTimer() { Stop(); }
    WindowTimer(const WindowTimer&) = delete;
    WindowTimer& operator=(const WindowTimer&) = delete;

    // The work is done after so many milliseconds, and then as often, until Stop; once more while it runs it
    // begins anew. window is one of this thread, with which the timer goes. False, with nothing changed, when
    // the system has no timer left.
    [[nodiscard]] bool Start(HWND window, UINT milliseconds);
    // Also from within the work.
    void Stop();
    // Null when it does not run.
    HWND Window() const { return m_window; }

  private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR self, DWORD time);

    std::function<void()> m_work;
    HWND m_window = nullptr;
};

// Whether a key or a click waits in the queue. It may have come since the timer's message was taken from
// there: work that can wait lets it go first.
bool IsInputWaiting();
