// QuietNotice: something that is told over a window once nothing else is in front of it, and nobody is in the
// midst of something.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "ui/window_timer.h"

class QuietNotice {
  public:
    // text is asked when it can be told; empty: there is nothing to be told any more.
    explicit QuietNotice(std::function<std::wstring()> text) : m_text(std::move(text)) {}

    // window is one of this thread. What already waits to be told is told once.
    void Tell(HWND window);
    // Before the window goes.
    void Stop() { m_timer.Stop(); }

  private:
    void MaybeTell();

    std::function<std::wstring()> m_text;
    WindowTimer m_timer{[this] { MaybeTell(); }}; // while it is to be told
};
