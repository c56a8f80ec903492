// Work on many contacts that is done in steps, so that a window can show how far it is and be asked to stop.
#pragma once

#include <windows.h>

#include <string>

namespace addrbook {

class Transfer {
  public:
    enum class State { Working, Asking, Done, Failed, Cancelled };

    virtual ~Transfer() = default;
    // Works for some milliseconds. After Asking it goes on once Ask has answered Working; after the others it
    // is not called again.
    virtual State Step(unsigned milliseconds) = 0;
    // Asks what Step came upon, over the owner: Working, or Cancelled.
    virtual State Ask(HWND) { return State::Working; }
    // Takes back what is not done, at once: the program ends. Not within Step. Neither Step nor Ask is called
    // again.
    virtual void Abandon() = 0;
    virtual int PerMille() const = 0; // of the work that is done, 0 to 1000
    // What a person is told at the end: counts, or why nothing came of it.
    virtual std::wstring Report() const = 0;
};

} // namespace addrbook
