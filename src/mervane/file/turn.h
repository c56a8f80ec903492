// Of several programs of a session that want to do the same thing at the same moment, one after the other has
// its turn.
#pragma once

#include <string>

#include "util/owners.h"

// While it lives, no other one of the same name is past its making, in this program's other threads and in
// other programs. A turn that is kept beyond the limit is not waited for any longer. Where the system refuses
// the name, because another user's program has it, nobody waits.
class Turn {
  public:
    static constexpr DWORD kLimit = 30'000; // milliseconds

    // name is the session's: no path, and none that another thing has.
    explicit Turn(const std::wstring& name, DWORD limit = kLimit);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    // Before it goes; nothing a second time.
    void End();

  private:
    UniqueKernelHandle m_mutex;
    bool m_isOurs = false;
};
