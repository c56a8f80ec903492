#include "app/daily_backup.h"

#include "app/journal_app.h"
#include "ui/gathered.h"
#include "util/clock.h"

namespace {

// The start comes first, and what the person does at once.
constexpr unsigned kDelay = 1000; // milliseconds
constexpr unsigned kSoon = 250;
// A journal that is never closed sees another day begin, and a disk get room again.
constexpr unsigned kNextLook = 3'600'000;

constexpr const wchar_t* kDamageFound =
    L"The journal's file is damaged. It was found when today's backup was made, which is not kept. The older "
    L"backups stay.\n\nWhat can be read is shown. The help tells, under Backup, how to go back to a backup.";

bool NoInputWaits()
{
    return !IsInputWaiting();
}

} // namespace

DailyBackup::DailyBackup() : m_damage([] { return std::wstring(kDamageFound); }) {}

void DailyBackup::Start(HWND window)
{
    m_stage = Stage::Begin;
    m_window = window;
    SetTimerOf(kDelay);
}

void DailyBackup::Stop()
{
    StopTimer();
    m_damage.Stop();
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
        return SetTimerOf(kSoon);
    DbJournal& journal = App().Journal();
    const unsigned next =
        m_stage == Stage::Copy ? journal.StepBackup(NoInputWaits) : journal.BeginBackup(LocalNow());
    m_stage = Stage::Copy;
    if (next != 0)
        return SetTimerOf(next);
    m_stage = Stage::Begin;
    if (journal.BackupTrouble() != StoreTrouble::Damaged)
        return SetTimerOf(kNextLook);
    HWND window = m_window;
    StopTimer();
    m_damage.Tell(window);
}
