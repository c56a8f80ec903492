// DailyBackup: the day's copy of the store, begun when the window has been painted and made while nobody
// presses a key; once an hour it looks whether another day has begun. Where a copy finds the store damaged
// the person is told, once, and no more copies are made.
#pragma once

#include <windows.h>

#include "app/quiet_notice.h"

class DailyBackup {
  public:
    DailyBackup();
    ~DailyBackup() { StopTimer(); }
    DailyBackup(const DailyBackup&) = delete;
    DailyBackup& operator=(const DailyBackup&) = delete;

    // Of the program's journal. window is one of this thread.
    void Start(HWND window);
    // Before the journal is closed; one that is not whole by then is removed.
    void Stop();

  private:
    static void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR self, DWORD time);
    void SetTimerOf(unsigned milliseconds);
    void StopTimer();
    void Continue();

    enum class Stage { Begin, Copy };
    HWND m_window = nullptr; // with the timer; null: nothing is to be done
    Stage m_stage = Stage::Begin;
    QuietNotice m_damage;
};
