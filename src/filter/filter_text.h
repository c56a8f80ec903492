// What the filter's button reads.
#pragma once

#include <string>

#include "data/filter_state.h"

// A filter on categories without any is no filter: it goes out of force.
std::wstring FilterText(FilterState* filter);
