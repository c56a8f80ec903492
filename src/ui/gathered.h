// Gathered: work that many messages ask for is done once for all of them, not too often, and not while a
// person who presses keys or the mouse would wait for it.
//
// The first request after a pause is met at once, so that a single change shows without delay. Others are met
// together by a timer, which comes when no message and no input waits.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

#include "ui/window_timer.h"

class Gathered {
  public:
    explicit Gathered(std::function<void()> work) : m_work(std::move(work)) {}

    // The work is done now, or at the latest when the pause after the last time is over and nothing else
    // waits. window is one of this thread; the request is forgotten when it is destroyed.
    void Ask(HWND window);
    // Forgets what was asked for.
    void Cancel() { m_timer.Stop(); }

  private:
    void Work();

    std::function<void()> m_work;
    WindowTimer m_timer{[this] { Work(); }};
    ULONGLONG m_resume = 0; // when the pause ends, in ticks
};
