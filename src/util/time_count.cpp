#include "util/time_count.h"

bool TimeCount::ToSystemTime(SYSTEMTIME* out) const
{
    const FILETIME time = ToFileTime();
    SYSTEMTIME converted;
    if (!FileTimeToSystemTime(&time, &converted))
        return false;
    *out = converted;
    return true;
}

bool TimeCount::FromSystemTime(const SYSTEMTIME& time)
{
    FILETIME converted;
    if (!SystemTimeToFileTime(&time, &converted))
        return false;
    *this = TimeCount(converted);
    return true;
}
