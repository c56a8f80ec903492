#include "editor/entry_timer.h"

#include "util/clock.h"

namespace {

constexpr const wchar_t* kLastTickHigh = L"Tmrh";
constexpr const wchar_t* kLastTickLow = L"Tmrl";

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
    NoteTick(settings);
    return true;
}

void EntryTimer::Stop(HWND window, RegistryStore* settings)
{
    StoreLastTick(settings, TimeCount());
    KillTimer(window, m_id);
    m_running = false;
}

void EntryTimer::NoteTick(RegistryStore* settings)
{
    m_lastTick = AwakeCount();
    StoreLastTick(settings, LocalNowCount());
}

void EntryTimer::Tick(RegistryStore* settings, EditorTimes* times)
{
    const TimeCount now = AwakeCount();
    if (now > m_lastTick)
        times->duration = times->duration + (now - m_lastTick);
    times->FollowDuration();
    NoteTick(settings);
}
