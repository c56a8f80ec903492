// A program started and watched from outside, as a user would: no word passes between it and the bench.
#pragma once

#include <windows.h>

#include <string>

#include "util/owners.h"

namespace bench {

// What a start waits for: a window of a class that is shown and painted; with rows, a list view in it that
// has so many of them and is painted as well.
struct Awaited {
    const wchar_t* windowClass;
    int rows = -1; // -1: no list view
};

// The window if it is there as awaited, otherwise null. It is painted when its thread has answered a message,
// so it has come to its message loop, and nothing of it waits to be drawn.
HWND FindPainted(const Awaited& awaited);
HWND WaitUntilPainted(const Awaited& awaited);

class StartedProgram {
  public:
    // path: of a program, from the bench's own folder.
    StartedProgram(const std::wstring& path, const std::wstring& arguments, const Awaited& awaited);
    // Closes the window and waits for the program's end.
    ~StartedProgram();
    StartedProgram(const StartedProgram&) = delete;
    StartedProgram& operator=(const StartedProgram&) = delete;

    // From before CreateProcess until the window was found painted.
    double MicrosecondsToPaint() const { return m_time; }
    HWND Window() const { return m_window; }

  private:
    UniqueKernelHandle m_process;
    HWND m_window = nullptr;
    double m_time = 0;
};

} // namespace bench
