// What the filter's button reads.
#pragma once

#include <string>

#include "data/filter_state.h"

std::wstring FilterText(const FilterState& filter);
