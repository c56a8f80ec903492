#include "app/daily_backup.h"

#include <utility>

#include "mervane/backup/backup_keep.h"
#include "util/clock.h"

namespace {

// The start comes first, and what the person does at once.
constexpr unsigned kDelay = 1000; // milliseconds
constexpr unsigned kSoon = 250;
// A journal that is never closed sees another day begin, a disk get room again, and a file that was mended.
constexpr unsigned kNextLook = 3'600'000;

constexpr const wchar_t* kDamageFound =
    L"The journal's file is damaged. It was found when today's backup was made, which is not kept. The older "
    L"backups stay.\n\nWhat can be read is shown. The help tells, under Backup, how to go back to a backup.";

} // namespace

DailyBackup::DailyBackup(DbJournal& journal)
    : m_journal(journal), m_damage([] { return std::wstring(kDamageFound); })
{}

// Where the system refuses a timer there is no backup this time.
void DailyBackup::Start(HWND window)
{
    m_isUnderWay = false;
    (void)m_timer.Start(window, kDelay);
}

void DailyBackup::Stop()
{
    m_timer.Stop();
    m_damage.Stop();
    m_journal.EndBackup();
}

void DailyBackup::ContinueIn(unsigned milliseconds)
{
    (void)m_timer.Start(m_timer.Window(), milliseconds);
}

// A timer's message comes when no other waits; keys that came since are seen to first.
void DailyBackup::Continue()
{
    if (IsInputWaiting())
        return ContinueIn(kSoon);
    const unsigned next = m_isUnderWay ? m_journal.StepBackup([] { return !IsInputWaiting(); })
                                       : m_journal.BeginBackup(LocalNow());
    m_isUnderWay = next != 0;
    if (m_isUnderWay)
        return ContinueIn(next);
    if (m_journal.BackupTrouble() == StoreTrouble::Damaged)
        TellOfDamage();
    ContinueIn(kNextLook);
}

void DailyBackup::TellOfDamage()
{
    const mervane::BackupDay today = mervane::DayOfTime(LocalNow());
    if (std::exchange(m_toldOn, today) != today)
        m_damage.Tell(m_timer.Window());
}
