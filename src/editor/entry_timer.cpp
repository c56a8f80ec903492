#include "editor/entry_timer.h"

namespace {
constexpr const wchar_t* kLastTickHigh = L"Tmrh";
constexpr const wchar_t* kLastTickLow = L"Tmrl";
} // namespace

void ClearLastTick(RegistryStore* settings)
{
    settings->SetNumber(kSettings, kLastTickHigh, 0);
    settings->SetNumber(kSettings, kLastTickLow, 0);
}
