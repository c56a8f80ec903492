// StartTurn: of several copies of a program that are started at the same moment, one after the other has its
// turn.
#pragma once

#include <string>

#include "util/owners.h"

// While it lives, no other copy is past the making of one with the same name: between the look for a window
// that is open already and the making of one's own. Waits for its turn; a copy that keeps it for longer than
// 30 seconds is not waited for any more.
class StartTurn {
  public:
    // name is the session's: no path, and none that another program has.
    explicit StartTurn(const std::wstring& name);
    ~StartTurn();
    StartTurn(const StartTurn&) = delete;
    StartTurn& operator=(const StartTurn&) = delete;

    // As soon as the others can find what they look for.
    void End();

  private:
    UniqueKernelHandle m_mutex;
    bool m_isOurs = false;
};
