#include "editor/entry_timer.h"

#include "util/clock.h"

namespace {

constexpr const wchar_t* kLastTickHigh = L"Tmrh";
constexpr const wchar_t* kLastTickLow = L"Tmrl";

} // namespace

bool EntryTimer::Start(HWND window, RegistryStore* settings)
{
    const UINT_PTR id = SetTimer(window, m_id, kPeriod, nullptr);
    if (!id)
        return false;
    m_id = id;
    m_running = true;
    StoreTick(settings, LocalNowCount());
    return true;
}

void EntryTimer::Stop(HWND window, RegistryStore* settings)
{
    StoreTick(settings, TimeCount());
    KillTimer(window, m_id);
    m_running = false;
}

void EntryTimer::StoreTick(RegistryStore* settings, TimeCount time)
{
    m_stored = time;
    settings->SetNumber(kSettings, kLastTickHigh, time.High());
    settings->SetNumber(kSettings, kLastTickLow, time.Low());
}

TimeCount EntryTimer::LastTick(const RegistryStore& settings) const
{
    const TimeCount stored(settings.GetNumber(kSettings, kLastTickLow, 0),
                           settings.GetNumber(kSettings, kLastTickHigh, 0));
    const bool isOfAnother = stored == TimeCount() || stored > m_stored;
    return m_running && isOfAnother ? m_stored : stored;
}

void EntryTimer::AddTimeSinceLastTick(RegistryStore* settings, EditorTimes* times)
{
    const TimeCount now = LocalNowCount();
    times->duration = times->duration + (now - LastTick(*settings));
    times->FollowDuration();
    StoreTick(settings, now);
}
