// EntryTimer: the editor's activity timer. Each tick adds the time that has passed since the one before,
// whose local time is kept in the settings as the two halves of a TimeCount.
#pragma once

#include <windows.h>

#include "editor/editor_times.h"
#include "settings/registry_store.h"

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

    // What a tick does: adds the time since the last one to the duration, the end follows, and this tick is
    // the last one. Where the clock was set back the duration shrinks by as much. The settings are those of
    // all windows, each over a store of its own: where another one's timer has cleared the last tick, or
    // stored a later one, this timer's own counts. An earlier one counts as it stands, for the settings say
    // when the last tick was.
    void AddTimeSinceLastTick(RegistryStore* settings, EditorTimes* times);

  private:
    void StoreTick(RegistryStore* settings, TimeCount time);
    TimeCount LastTick(const RegistryStore& settings) const;

    UINT_PTR m_id = 1; // what the system called the timer, from its first start on
    bool m_running = false;
    TimeCount m_stored; // by this timer, the last time
};
