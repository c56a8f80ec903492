// What of the filter is stored: the months, the range and whether a filter is in force. The categories last
// only as long as the program runs.
#pragma once

#include "data/filter_state.h"
#include "settings/registry_store.h"

// Of the subkey Options; the Options dialog stores it.
constexpr const wchar_t* kRememberFilter = L"RememberFilter";

// Whether a day of the range was ever set.
inline bool IsSet(const SYSTEMTIME& day)
{
    return day.wYear != 0;
}

// At the start: the stored months, range and state of a filter on dates; the categories are none. What is
// stored as in force without a month or a whole range to filter by is not in force. A stored date that is
// none reads as never set, that is all zero, and so do bits beyond the twelve months.
void LoadFilter(const RegistryStore& settings, FilterState* filter);
// The stored months and range alone.
void LoadFilterDates(const RegistryStore& settings, FilterState* filter);

// Whether a cleared filter's months and range stay stored and are offered again. Off unless it is stored,
// other than where the user sets it.
bool RemembersFilter(const RegistryStore& settings);

// Puts what the user has chosen in force, or nothing when nothing was chosen, and stores it: the range or the
// months; the other one stays as it was stored. Of categories it is stored only that they are in force.
void AcceptFilter(FilterState* filter, RegistryStore* settings);
// Takes everything out of the filter, and out of what is stored unless that is to be remembered.
void ClearFilter(FilterState* filter, RegistryStore* settings);
