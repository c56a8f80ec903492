#include "ui/gathered.h"

#include <algorithm>

namespace {

// Milliseconds from one time to the next. Long work leaves as much time again to everything else, within the
// second in which a change is to be seen.
constexpr ULONGLONG kPause = 300;
constexpr ULONGLONG kLongestPause = 500;
// How long what is due waits for its turn: while nobody presses keys, and in any case.
constexpr ULONGLONG kLate = 100;
constexpr ULONGLONG kTooLate = 400;

} // namespace

void Gathered::Ask(HWND window)
{
    const ULONGLONG now = GetTickCount64();
    const bool isDue = now >= m_resume && !IsInputWaiting();
    if (IsWindow(m_timer.Window())) {
        // Where messages never end, no timer's comes.
        if (now >= m_resume + (isDue ? kLate : kTooLate))
            Work();
        return;
    }
    if (isDue)
        return Work();
    const ULONGLONG rest = std::max<ULONGLONG>(m_resume > now ? m_resume - now : 0, USER_TIMER_MINIMUM);
    if (!m_timer.Start(window, static_cast<UINT>(rest)))
        Work();
}

void Gathered::Work()
{
    Cancel();
    const ULONGLONG start = GetTickCount64();
    m_resume = start + kPause; // for what the work itself may ask for
    m_work();
    const ULONGLONG end = GetTickCount64();
    m_resume = end + std::clamp(2 * (end - start), kPause, kLongestPause);
}
