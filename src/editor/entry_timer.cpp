#include "editor/entry_timer.h"

#include "util/clock.h"

namespace {

constexpr const wchar_t* kLastTickHigh = L"Tmrh";
constexpr const wchar_t* kLastTickLow = L"Tmrl";

TimeCount LastTick(const RegistryStore& settings)
{
    return {settings.GetNumber(kSettings, kLastTickLow, 0), settings.GetNumber(kSettings, kLastTickHigh, 0)};
}

void StoreLastTick(RegistryStore* settings, TimeCount time)
{
    settings->SetNumber(kSettings, kLastTickHigh, time.High());
    settings->SetNumber(kSettings, kLastTickLow, time.Low());
}

} // namespace

bool EntryTimer::Start(HWND window, RegistryStore* settings)
{
    const UINT_PTR id = SetTimer(window, m_id, kPeriod, nullptr);
    if (!id)
        return false;
    m_id = id;
    m_running = true;
    StoreLastTick(settings, LocalNowCount());
    return true;
}

void EntryTimer::Stop(HWND window, RegistryStore* settings)
{
    StoreLastTick(settings, TimeCount());
    KillTimer(window, m_id);
    m_running = false;
}

void AddTimeSinceLastTick(RegistryStore* settings, EditorTimes* times)
{
    const TimeCount now = LocalNowCount();
    times->duration = times->duration + (now - LastTick(*settings));
    times->FollowDuration();
    StoreLastTick(settings, now);
}
