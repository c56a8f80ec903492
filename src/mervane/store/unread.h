// Unread: what could not be read for a reason that may pass is to be read again once it can be.
#pragma once

#include <windows.h>

#include "mervane/file/trouble.h"

namespace mervane {

class Unread {
  public:
    // Of an operation that reads.
    void Note(StoreTrouble trouble) { m_isThere |= MayPass(trouble); }

    // To be asked every now and then, at a time in ticks, when the store can be read: whether those who show
    // it are to read it again. What fails again and again is tried more and more seldom.
    [[nodiscard]] bool IsDue(ULONGLONG now);

  private:
    static constexpr ULONGLONG kFirstPause = 250, kLongestPause = 32'000; // milliseconds

    bool m_isThere = false;
    ULONGLONG m_next = 0;
    ULONGLONG m_pause = kFirstPause;
};

} // namespace mervane
