#include "filter/filter_settings.h"

#include "util/month_set.h"
#include "util/time_count.h"

namespace {

constexpr const wchar_t* kActive = L"Active";
constexpr const wchar_t* kRange = L"fRange";
constexpr DWORD kRangeDefault = 1;
constexpr const wchar_t* kMonths = L"fMonths";
constexpr DWORD kAllMonths = (1u << kMonthCount) - 1;
constexpr DWORD kRememberFilterDefault = 0; // here; the user's own view of it has another

// A day of the range, as the two halves of a FILETIME. Zero: never set.
struct StoredDay {
    const wchar_t* low;
    const wchar_t* high;
};
constexpr StoredDay kStart = {L"mLStart", L"mHStart"};
constexpr StoredDay kEnd = {L"mLEnd", L"mHEnd"};

SYSTEMTIME ReadDay(const RegistryStore& settings, const StoredDay& stored)
{
    const TimeCount time(settings.GetNumber(kFilter, stored.low, 0),
                         settings.GetNumber(kFilter, stored.high, 0));
    SYSTEMTIME day{};
    if (time.Units() == 0 || !time.ToSystemTime(&day))
        return {};
    return day;
}

void WriteDay(RegistryStore* settings, const StoredDay& stored, const SYSTEMTIME& day)
{
    TimeCount time;
    if (!time.FromSystemTime(day))
        time.Zero();
    settings->SetNumber(kFilter, stored.low, time.Low());
    settings->SetNumber(kFilter, stored.high, time.High());
}

void WriteRange(RegistryStore* settings, const FilterState& filter)
{
    WriteDay(settings, kStart, filter.rangeStart);
    WriteDay(settings, kEnd, filter.rangeEnd);
    settings->SetNumber(kFilter, kRange, 1);
}

void WriteMonths(RegistryStore* settings, const FilterState& filter)
{
    settings->SetNumber(kFilter, kRange, 0);
    settings->SetNumber(kFilter, kMonths, filter.monthMask);
}

bool HasDates(const FilterState& filter)
{
    if (filter.rangeMode)
        return IsSet(filter.rangeStart) && IsSet(filter.rangeEnd);
    return filter.monthMask != 0;
}

} // namespace

void LoadFilter(const RegistryStore& settings, FilterState* filter)
{
    LoadFilterDates(settings, filter);
    filter->active = settings.GetNumber(kFilter, kActive, 0) != 0 && HasDates(*filter);
    filter->categoriesMode = false;
    filter->categories.DeleteStack();
}

void LoadFilterDates(const RegistryStore& settings, FilterState* filter)
{
    filter->rangeStart = ReadDay(settings, kStart);
    filter->rangeEnd = ReadDay(settings, kEnd);
    filter->rangeMode = settings.GetNumber(kFilter, kRange, kRangeDefault) != 0;
    filter->monthMask = settings.GetNumber(kFilter, kMonths, 0) & kAllMonths;
}

bool RemembersFilter(const RegistryStore& settings)
{
    return settings.GetNumber(kOptions, kRememberFilter, kRememberFilterDefault) != 0;
}

void AcceptFilter(FilterState* filter, RegistryStore* settings)
{
    if (filter->categoriesMode) {
        filter->active = !filter->categories.IsEmpty();
    } else if (filter->rangeMode) {
        filter->active = true;
        WriteRange(settings, *filter);
    } else {
        filter->active = filter->monthMask != 0;
        WriteMonths(settings, *filter);
    }
    settings->SetNumber(kFilter, kActive, filter->active);
}

// In memory it is a filter on months from now on, and a filter on a range at the next start.
void ClearFilter(FilterState* filter, RegistryStore* settings)
{
    *filter = {};
    if (!RemembersFilter(*settings)) {
        settings->SetNumber(kFilter, kMonths, 0);
        WriteRange(settings, *filter);
    }
    settings->SetNumber(kFilter, kActive, 0);
}
