// Gathered: work that many messages ask for is done once for all of them, not too often, and not while a
// person who presses keys or the mouse would wait for it.
//
// The first request after a pause is met at once, so that a single change shows without delay. Others are met
// together by a timer, which comes when no message and no input waits.
#pragma once

#include <windows.h>

#include <functional>

// Whether a key or a click waits in the queue.
bool IsInputWaiting();

class Gathered {
  public:
    explicit Gathered(std::function<void()> work) : m_work(std::move(work)) {}
    ~Gathered() { Cancel(); }
    Gathered(const Gathered&) = delete;
    Gathered& operator=(const Gathered&) = delete;

    // The work is done now, or at the latest when the pause after the last time is over and nothing else
    // waits. window is one of this thread; the request is forgotten when it is destroyed.
    void Ask(HWND window);
    // Forgets what was asked for.
    void Cancel();

  private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR self, DWORD time);
    void Work();

    std::function<void()> m_work;
    HWND m_waiting = nullptr; // the window whose timer will do it
    ULONGLONG m_resume = 0;   // when the pause ends, in ticks
};
