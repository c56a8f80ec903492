// EntryTimer: the editor's activity timer. Each tick adds the time that the system was awake since the one
// before. The last tick's local time is kept in the settings as the two halves of a TimeCount; it is not
// read, since a clock that is set or changes with the season tells nothing of how long something took.
#pragma once

#include <windows.h>

#include "app/registry_store.h"
#include "editor/editor_times.h"

class EntryTimer {
  public:
    static constexpr UINT kPeriod = 60'000; // milliseconds between two ticks

    // Has WM_TIMER sent to the window for each tick; the first one counts from now. False, with nothing
    // changed, when the system has no timer left.
    [[nodiscard]] bool Start(HWND window, RegistryStore* settings);
    // Also when it does not run: a last tick that an earlier editor left behind is cleared.
    void Stop(HWND window, RegistryStore* settings);
    bool IsRunning() const { return m_running; }
    // Whether the WM_TIMER with this wParam is a tick.
    bool IsTick(UINT_PTR id) const { return m_running && id == m_id; }
    // What a tick does: adds the time since the last one, or since the start, to the duration, the end
    // follows, and this tick is the last one. The duration never shrinks.
    void Tick(RegistryStore* settings, EditorTimes* times);

  private:
    void NoteTick(RegistryStore* settings);

    UINT_PTR m_id = 1;    // what the system called the timer, from its first start on
    TimeCount m_lastTick; // as AwakeCount has it
    bool m_running = false;
};
