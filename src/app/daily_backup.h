// DailyBackup: the day's copy of the store, begun when the window has been painted and made while nobody
// presses a key; once an hour it looks whether another day has begun. Where a copy finds the store damaged
// the person is told, once, and no more copies are made.
#pragma once

#include <windows.h>

#include "app/quiet_notice.h"
#include "ui/window_timer.h"

class DailyBackup {
  public:
    DailyBackup();

    // Of the program's journal. window is one of this thread.
    void Start(HWND window);
    // Before the journal is closed; one that is not whole by then is removed.
    void Stop();

  private:
    void Continue();
    void ContinueIn(unsigned milliseconds);

    WindowTimer m_timer{[this] { Continue(); }};
    bool m_isUnderWay = false; // a copy
    QuietNotice m_damage;
};
