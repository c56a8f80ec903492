// Work on many contacts that is done in steps, so that a window can show how far it is and be asked to stop.
#pragma once

#include <string>

namespace addrbook {

class Transfer {
  public:
    enum class State { Working, Done, Failed };

    virtual ~Transfer() = default;
    // Works for some milliseconds. Once it does not answer Working it is not called again.
    virtual State Step(unsigned milliseconds) = 0;
    virtual int PerMille() const = 0; // of the work that is done, 0 to 1000
    // What a person is told at the end: counts, or why nothing came of it.
    virtual std::wstring Report() const = 0;
};

} // namespace addrbook
