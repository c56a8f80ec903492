#include "mervane/store/unread.h"

#include <algorithm>

namespace mervane {

bool Unread::IsDue(ULONGLONG now)
{
    if (now < m_next)
        return false;
    if (!m_isThere) {
        // Long enough since the last time: it was read.
        if (now - m_next > m_pause)
            m_pause = kFirstPause;
        return false;
    }
    m_isThere = false;
    m_next = now + m_pause;
    m_pause = std::min(2 * m_pause, kLongestPause);
    return true;
}

} // namespace mervane
