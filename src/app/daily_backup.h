// DailyBackup: the day's copy of the store, begun when the window has been painted and made while nobody
// presses a key; once an hour it looks whether another day has begun, or what was in the way has gone. Where
// a copy finds the store damaged the person is told, once a day.
#pragma once

#include <windows.h>

#include <optional>

#include "app/quiet_notice.h"
#include "mervane/backup/backup_keep.h"
#include "mervane/db_journal.h"
#include "ui/window_timer.h"

class DailyBackup {
  public:
    explicit DailyBackup(DbJournal& journal);

    // window is one of this thread.
    void Start(HWND window);
    // Before the journal is closed; one that is not whole by then is removed.
    void Stop();

  private:
    void Continue();
    void ContinueIn(unsigned milliseconds);
    void TellOfDamage();

    DbJournal& m_journal;
    WindowTimer m_timer{[this] { Continue(); }};
    bool m_isUnderWay = false; // a copy
    QuietNotice m_damage;
    std::optional<mervane::BackupDay> m_toldOn;
};
