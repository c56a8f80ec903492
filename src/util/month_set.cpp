#include "util/month_set.h"

#include <bit>

namespace {

constexpr uint32_t kAllMonths = (1u << kMonthCount) - 1;

constexpr wchar_t kMonthNames[kMonthCount][12] = {L"January",   L"February", L"March",    L"April",
                                                  L"May",       L"June",     L"July",     L"August",
                                                  L"September", L"October",  L"November", L"December"};

struct MaskedField {
    uint32_t bit;
    WORD SYSTEMTIME::*field;
};
constexpr MaskedField kFields[] = {
    {kFieldMonth, &SYSTEMTIME::wMonth},         {kFieldDay, &SYSTEMTIME::wDay},
    {kFieldYear, &SYSTEMTIME::wYear},           {kFieldSecond, &SYSTEMTIME::wSecond},
    {kFieldHour, &SYSTEMTIME::wHour},           {kFieldMinute, &SYSTEMTIME::wMinute},
    {kFieldDayOfWeek, &SYSTEMTIME::wDayOfWeek}, {kFieldMilliseconds, &SYSTEMTIME::wMilliseconds},
};

void KeepFields(SYSTEMTIME* time, uint32_t mask)
{
    for (const MaskedField& field : kFields) {
        if (!(mask & field.bit))
            time->*field.field = 0;
    }
}

// A time that is no date counts as the beginning of all time, so that the comparison is always defined.
FILETIME ToFileTime(const SYSTEMTIME& time)
{
    FILETIME converted{};
    return SystemTimeToFileTime(&time, &converted) ? converted : FILETIME{};
}

} // namespace

const wchar_t* MonthName(int index)
{
    return MonthBit(index) ? kMonthNames[index] : nullptr;
}

uint32_t MonthBit(int index)
{
    return index >= 0 && index < kMonthCount ? 1u << index : 0;
}

int CountMonths(uint32_t set)
{
    return std::popcount(set & kAllMonths);
}

int CompareDates(SYSTEMTIME* first, SYSTEMTIME* second, uint32_t mask)
{
    KeepFields(first, mask);
    KeepFields(second, mask);
    const FILETIME firstTime = ToFileTime(*first);
    const FILETIME secondTime = ToFileTime(*second);
    return CompareFileTime(&firstTime, &secondTime);
}
