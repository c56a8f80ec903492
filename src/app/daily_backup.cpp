#include "app/daily_backup.h"

#include "app/journal_app.h"
#include "util/clock.h"

namespace {

// The start comes first, and what the person does at once.
constexpr unsigned kDelay = 1000; // milliseconds

bool NoInputWaits()
{
    return HIWORD(GetQueueStatus(QS_KEY | QS_MOUSEBUTTON)) == 0;
}

} // namespace

void DailyBackup::Start(HWND window)
{
    m_begun = false;
    m_window = window;
    SetTimerOf(kDelay);
}

void DailyBackup::Stop()
{
    StopTimer();
    App().Journal().EndBackup();
}

// Where the system refuses it there is no backup this time.
void DailyBackup::SetTimerOf(unsigned milliseconds)
{
    SetTimer(m_window, reinterpret_cast<UINT_PTR>(this), milliseconds, OnTimer);
}

void DailyBackup::StopTimer()
{
    if (m_window)
        KillTimer(m_window, reinterpret_cast<UINT_PTR>(this));
    m_window = nullptr;
}

void CALLBACK DailyBackup::OnTimer(HWND, UINT, UINT_PTR self, DWORD)
{
    reinterpret_cast<DailyBackup*>(self)->Continue();
}

// A timer's message comes when no other waits; keys that came since are seen to first.
void DailyBackup::Continue()
{
    if (!NoInputWaits())
        return;
    DbJournal& journal = App().Journal();
    const unsigned next = m_begun ? journal.StepBackup(NoInputWaits) : journal.BeginBackup(LocalNow());
    m_begun = true;
    if (next == 0)
        StopTimer();
    else
        SetTimerOf(next);
}
