// QuietNotice: something that is told over a window once nothing else is in front of it, and nobody is in the
// midst of something.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

class QuietNotice {
  public:
    // text is asked when it can be told; empty: there is nothing to be told any more.
    explicit QuietNotice(std::function<std::wstring()> text) : m_text(std::move(text)) {}
    ~QuietNotice() { Stop(); }
    QuietNotice(const QuietNotice&) = delete;
    QuietNotice& operator=(const QuietNotice&) = delete;

    // window is one of this thread. What already waits to be told is told once.
    void Tell(HWND window);
    // Before the window goes.
    void Stop();

  private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR self, DWORD time);
    void MaybeTell();

    std::function<std::wstring()> m_text;
    HWND m_window = nullptr; // with the timer; null: nothing is to be told
};
